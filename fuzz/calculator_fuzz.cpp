// Any text as a calculator expression, held against the rule as it is told: a spaced copy, cut at
// blanks, token by token.

#include <TAVIX20.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

bool IsOperator(char ch) {
    return ch == '+' || ch == '-' || ch == '*' || ch == '/';
}

double ByTheRule(const std::string &expression) {
    std::string spaced;
    for (const char ch : expression) {
        if (IsOperator(ch))
            (((spaced += ' ') += ch) += ' ');
        else if ((ch >= '0' && ch <= '9') || ch == '.')
            spaced += ch;
    }
    double result = 0.0;
    char pending = '\0';
    bool isFirst = true;
    std::istringstream tokens(spaced);
    for (std::string token; tokens >> token; isFirst = false) {
        const double number = std::atof(token.c_str());
        if (IsOperator(token[0]))
            pending = token[0];
        else if (isFirst)
            result = number;
        else if (pending == '+')
            result += number;
        else if (pending == '-')
            result -= number;
        else if (pending == '*')
            result *= number;
        else if (pending == '/')
            result /= number;
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string text(data, data + size);
    text.resize(std::min(text.find('\0'), text.size()));
    const double value = CStdlib::GetCalcString(text.c_str());
    const double expected = ByTheRule(text);
    if (value != expected && !(std::isnan(value) && std::isnan(expected)))
        std::abort();
    return 0;
}
