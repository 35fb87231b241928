// Texts tested, converted and thinned out.

#include "TAVIX20/platform/collections.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_number.h"
#include "TAVIX20/support/text_view.h"
#include "TAVIX20/support/variant.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <algorithm>
#include <charconv>
#include <climits>

using tavix::ViewOf;
using tavix::WHITE_SPACE;

namespace {

CString Without(const char *text, std::string_view characters) {
    std::string result(ViewOf(text));
    std::erase_if(result, [&](char ch) { return characters.find(ch) != std::string_view::npos; });
    return result;
}

} // namespace

int CStdlib::IsNumeric(const char *text) {
    return tavix::IsDigitsOnly(ViewOf(text)) ? 1 : 0;
}

int CStdlib::IsAlphabetics(const char *text) {
    return tavix::IsLettersOnly(ViewOf(text)) ? 1 : 0;
}

CString CStdlib::AsciiToUTF8(const char *text) {
    return QString::fromLatin1(text).toUtf8().toStdString();
}

CString CStdlib::UTF8ToAscii(const char *text) {
    return QString::fromUtf8(text).toLatin1().toStdString();
}

CString CStdlib::TextToHex(const char *text) {
    return QByteArray(text).toHex().toUpper().toStdString();
}

CString CStdlib::HexToText(const char *hex) {
    const std::string_view digits = ViewOf(hex);
    const bool isHex = digits.size() % 2 == 0 &&
                       digits.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
    return isHex ? CString(QByteArray::fromHex(QByteArray(hex)).toStdString()) : CString();
}

long CStdlib::HexStrToDecimal(const char *hex) {
    std::string_view digits = tavix::WithoutLeadingSpace(ViewOf(hex));
    if (digits.starts_with("0x") || digits.starts_with("0X"))
        digits.remove_prefix(2);
    unsigned long value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (result.ec == std::errc::result_out_of_range)
        return LONG_MAX;
    return static_cast<long>(std::min<unsigned long>(value, LONG_MAX));
}

CString CStdlib::TextToNoChars(const char *text, const char *characters) {
    return Without(text, ViewOf(characters));
}

CString CStdlib::TextToNoSpace(const char *text) {
    return Without(text, WHITE_SPACE);
}

CString CStdlib::LongToStr(long number) {
    return tavix::WriteLong(number);
}

int CStdlib::ReverseFind(const char *text, const char *sought) {
    const std::size_t found = ViewOf(text).rfind(ViewOf(sought));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

int CStdlib::GetParseArgs(const char *commandLine, CStringArray &arguments) {
    const int before = arguments.GetSize();
    std::string argument;
    bool isArgument = false;
    bool isQuoted = false;
    const auto endArgument = [&] {
        if (isArgument)
            arguments.Add(argument);
        argument.clear();
        isArgument = false;
    };
    for (const char ch : ViewOf(commandLine)) {
        if (!isQuoted && WHITE_SPACE.find(ch) != std::string_view::npos) {
            endArgument();
            continue;
        }
        isArgument = true;
        if (ch == '"')
            isQuoted = !isQuoted;
        else
            argument += ch;
    }
    endArgument();
    return arguments.GetSize() - before;
}

std::time_t CStdlib::StrToTimeObj(const char *text) {
    const QDateTime time = QDateTime::fromString(QString::fromUtf8(text), Qt::ISODate);
    return time.isValid() ? time.toSecsSinceEpoch() : -1;
}

CString CStdlib::VarToString(const CVariant &value) {
    return value.ToString();
}

CVariant CStdlib::BlobToVariant(const void *data, int size) {
    return CString(static_cast<const char *>(data), size);
}

int CStdlib::VariantToBlob(const CVariant &value, std::vector<unsigned char> &blob) {
    const std::string_view bytes = ViewOf(value.ToString());
    blob.assign(bytes.begin(), bytes.end());
    return value.ToString().GetLength();
}
