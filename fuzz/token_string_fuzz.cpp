// Any token string, key and value, separated by zeros, held against the rules step by step.

#include <TAVIX20.h>
#include <TAVIX20/support/std_string.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace {

std::string Get(const std::string &text, const std::string &key) {
    const std::size_t found = text.find(key);
    std::string value;
    if (found != std::string::npos)
        for (std::size_t i = found + key.size() + 1; i < text.size() && text[i] != ';'; ++i)
            value += text[i];
    return value;
}

std::string Remove(std::string text, const std::string &key) {
    const std::size_t found = text.find(key);
    if (found == std::string::npos)
        return text;
    text.erase(found, key.size());
    while (found < text.size() && text[found] != ';')
        text.erase(found, 1);
    text.erase(found, 1);
    return text;
}

std::string Set(std::string text, const std::string &key, const std::string &value) {
    if (!Get(text, key).empty())
        text = Remove(text, key);
    const bool isOpen = !text.empty() && text[text.size() - 1] != ';';
    return text + (isOpen ? ";" : "") + key + "=" + value;
}

/// Cuts the text up to the next zero off the input.
std::string Next(std::string &input) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string text = input.substr(0, end);
    input.erase(0, end + 1);
    return text;
}

void Expect(bool isTrue) {
    if (!isTrue)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string input(data, data + std::min<std::size_t>(size, 4096));
    const std::string key = Next(input);
    const std::string value = Next(input);
    const std::string text = Next(input);
    const CString set = CStdlib::SetTokenValue(text.c_str(), key.c_str(), value.c_str());
    Expect(CStdlib::GetTokenValue(text.c_str(), key.c_str()) == Get(text, key).c_str());
    Expect(CStdlib::RemoveTokenValue(text.c_str(), key.c_str()) == Remove(text, key).c_str());
    Expect(set == Set(text, key, value).c_str());

    CStdString string(text.c_str());
    Expect(string.GetTokenValue(key.c_str()) == Get(text, key).c_str());
    Expect(string.SetTokenValue(key.c_str(), value.c_str()) == set.GetString());
    Expect(string.RemoveTokenValue(key.c_str()) == Remove(set.GetString(), key).c_str());
    return 0;
}
