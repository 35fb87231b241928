#include "TAVIX20/display/object_keys.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace tavix {

namespace {

constexpr std::string_view BLANKS = " \t\r\n";

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

/// The whole text as a number of the given base.
template <typename Number, typename... Base>
bool Parse(std::string_view text, Number &number, Base... base) {
    Number parsed{};
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), parsed, base...);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return false;
    number = parsed;
    return true;
}

bool ReadWhole(std::string_view value, std::int32_t &first, std::int32_t &second) {
    double x = 0;
    double y = 0;
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    if (!ReadPair(value, x, y))
        return false;
    x = std::round(x);
    y = std::round(y);
    if (x < lowest || x > highest || y < lowest || y > highest)
        return false;
    first = static_cast<std::int32_t>(x);
    second = static_cast<std::int32_t>(y);
    return true;
}

} // namespace

std::string FormatNumber(double value) {
    if (!std::isfinite(value))
        return "0.00";
    // Sign, 309 digits and the decimals of the largest double.
    char digits[320];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 2).ptr;
    return {digits, end};
}

void KeyWriter::Text(std::string_view key, std::string_view value) {
    if (!m_list.empty())
        m_list += ';';
    m_list.append(key).append(1, '=').append(value);
}

void KeyWriter::EscapedText(std::string_view key, std::string_view value) {
    std::string escaped;
    for (const char ch : value) {
        if (ch == '%')
            escaped += "%25";
        else if (ch == ';')
            escaped += "%3B";
        else
            escaped += ch;
    }
    Text(key, escaped);
}

void KeyWriter::Integer(std::string_view key, std::int64_t value) {
    Text(key, std::to_string(value));
}

void KeyWriter::Number(std::string_view key, double value, std::string_view unit) {
    Text(key, FormatNumber(value).append(unit));
}

void KeyWriter::Pair(std::string_view key, double first, double second) {
    Text(key, FormatNumber(first).append(", ").append(FormatNumber(second)));
}

void KeyWriter::Colour(std::string_view key, COLORREF colour) {
    std::string text = "0x000000";
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, colour, 16).ptr;
    const auto count = static_cast<std::size_t>(end - digits);
    text.replace(text.size() - std::min<std::size_t>(count, 6), std::string::npos, digits, count);
    Text(key, text);
}

std::vector<KeyEntry> ParseKeys(std::string_view list) {
    std::vector<KeyEntry> entries;
    std::unordered_map<std::string_view, int> counts;
    while (!list.empty()) {
        const std::string_view entry = list.substr(0, list.find(';'));
        list.remove_prefix(std::min(list.size(), entry.size() + 1));
        const auto equals = entry.find('=');
        if (equals == std::string_view::npos)
            continue;
        const std::string_view key = Trim(entry.substr(0, equals));
        entries.push_back({key, Trim(entry.substr(equals + 1)), counts[key]++});
    }
    return entries;
}

std::vector<KeyEntry> ChangedKeys(std::string_view list, std::string_view current) {
    std::unordered_map<std::string_view, std::vector<std::string_view>> values;
    for (const KeyEntry &entry : ParseKeys(current))
        values[entry.key].push_back(entry.value);
    std::vector<KeyEntry> entries = ParseKeys(list);
    std::erase_if(entries, [&](const KeyEntry &entry) {
        const auto known = values.find(entry.key);
        const auto index = static_cast<std::size_t>(entry.occurrence);
        return known != values.end() && index < known->second.size() &&
               known->second[index] == entry.value;
    });
    return entries;
}

bool ReadInteger(std::string_view value, std::int32_t &field) {
    return Parse(Trim(value), field);
}

bool ReadColour(std::string_view value, COLORREF &field) {
    const bool hexadecimal = value.starts_with("0x") || value.starts_with("0X");
    return hexadecimal ? Parse(value.substr(2), field, 16) : Parse(value, field, 10);
}

bool ReadNumber(std::string_view value, double &field, std::string_view unit) {
    if (!unit.empty() && value.ends_with(Trim(unit)))
        value.remove_suffix(Trim(unit).size());
    double number = 0;
    if (!Parse(Trim(value), number) || !std::isfinite(number))
        return false;
    field = number;
    return true;
}

bool ReadPair(std::string_view value, double &first, double &second) {
    const auto comma = value.find(',');
    double x = 0;
    double y = 0;
    if (comma == std::string_view::npos || !ReadNumber(value.substr(0, comma), x) ||
        !ReadNumber(value.substr(comma + 1), y))
        return false;
    first = x;
    second = y;
    return true;
}

bool ReadPoint(std::string_view value, tagPOINT &field) {
    return ReadWhole(value, field.x, field.y);
}

bool ReadSize(std::string_view value, tagSIZE &field) {
    return ReadWhole(value, field.cx, field.cy);
}

std::string Unescape(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const std::string_view code = value.substr(i, 3);
        if (code == "%25" || code == "%3B") {
            text += code == "%25" ? '%' : ';';
            i += 2;
        } else {
            text += value[i];
        }
    }
    return text;
}

} // namespace tavix
