// The calculator goes through the expression once. Characters outside numbers and operators are
// dropped wherever they stand, so "1a2" is the number 12; an operator ends a number.

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_number.h"
#include "TAVIX20/support/text_view.h"

namespace {

double Combine(double result, char operation, double number) {
    switch (operation) {
    case '+':
        return result + number;
    case '-':
        return result - number;
    case '*':
        return result * number;
    default:
        return result / number;
    }
}

} // namespace

double CStdlib::GetCalcString(const char *expression) {
    double result = 0.0;
    char pending = '\0';
    std::string digits;
    const auto endNumber = [&] {
        if (digits.empty())
            return;
        const double number = tavix::ReadDouble(digits.c_str());
        result = pending ? Combine(result, pending, number) : number;
        digits.clear();
    };
    for (const char ch : tavix::ViewOf(expression)) {
        if ((ch >= '0' && ch <= '9') || ch == '.') {
            digits += ch;
        } else if (ch == '+' || ch == '-' || ch == '*' || ch == '/') {
            endNumber();
            pending = ch;
        }
    }
    endNumber();
    return result;
}
