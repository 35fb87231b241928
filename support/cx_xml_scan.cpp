// TinyXML parses by recursion, one level an element, asks every node on the way up for the
// document, and compares each attribute with all before it. So a text must be known to be harmless
// before it is parsed, and known exactly: a limit that guessed would refuse what the parser reads,
// or let pass what breaks it. The scanner therefore follows the parser's own steps, its slips
// included: it takes characters of several bytes as the parser does, over "<" and quotes within; an
// entity without end ends all reading; a numeric one reaches up to the next ";" wherever that is.
// What is complicated, entities and white space, it has TinyXML do.

#include "TAVIX20/support/cx_xml_scan.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_set>

namespace tavix {

namespace {

/// TinyXML's helpers for classes derived from its own.
struct Parser : TiXmlBase {
    using TiXmlBase::GetEntity;
    using TiXmlBase::IsAlpha;
    using TiXmlBase::IsAlphaNum;
    using TiXmlBase::IsWhiteSpace;
    using TiXmlBase::SkipWhiteSpace;
    using TiXmlBase::StringEqual;
};

constexpr std::string_view CDATA_START = "<![CDATA[";

class Scanner {
public:
    Scanner(std::string_view text, TiXmlEncoding encoding, std::size_t maxDepth,
            std::size_t maxAttributes)
        : m_text(text), m_maxDepth(maxDepth), m_maxAttributes(maxAttributes) {
        for (std::size_t byte = 0; byte < m_isName.size(); ++byte) {
            const auto ch = static_cast<unsigned char>(byte);
            m_isSpace[byte] = Parser::IsWhiteSpace(static_cast<char>(ch));
            m_isName[byte] = Parser::IsAlphaNum(ch, encoding) != 0 || ch == '_' || ch == '-' ||
                             ch == '.' || ch == ':';
        }
        m_isName[0] = m_isSpace[0] = false;
        SetEncoding(encoding);
    }

    XmlScan Run() {
        if (m_encoding == TIXML_ENCODING_UNKNOWN && m_text.starts_with("\xEF\xBB\xBF"))
            SetEncoding(TIXML_ENCODING_UTF8);
        const char *at = SkipSpace(m_text.data());
        while (at != nullptr && *at != '\0')
            at = SkipSpace(PassPiece(at));
        m_scan.encoding = m_encoding;
        return std::move(m_scan);
    }

private:
    // All of these return where to go on, or null where the parser gives up.

    const char *PassPiece(const char *at) {
        if (at[0] == '<' && at[1] == '/' && !m_open.empty())
            return PassEndTag(at);
        m_stepsUp += m_open.size();
        if (m_stepsUp > MAX_STEPS_UP)
            return Stop(XmlScan::Stop::TooDeep, at);
        if (*at != '<')
            return m_open.empty() ? nullptr : PassText(at, '<');
        ++m_nodes;
        if (at[1] == '?' && Parser::StringEqual(at, "<?xml", true, m_encoding))
            return PassDeclaration(at);
        if (Rest(at).starts_with("<!--"))
            return PassBehind(at, 4, "-->");
        if (Rest(at).starts_with(CDATA_START))
            return PassCdata(at);
        if (Parser::IsAlpha(static_cast<unsigned char>(at[1]), m_encoding) != 0 || at[1] == '_')
            return PassStartTag(at);
        return PassBehind(at, 1, ">");
    }

    const char *PassBehind(const char *at, std::size_t skip, std::string_view end) const {
        const std::size_t found = Rest(at).find(end, skip);
        return found != std::string_view::npos ? at + found + end.size() : nullptr;
    }

    /// Up to the end character; null where that is missing or the text's last character.
    const char *PassText(const char *at, char end) {
        while (*at != end) {
            if (const std::uint8_t step = m_step[static_cast<unsigned char>(*at)]) {
                at += step;
            } else if (*at == '&') {
                // What is not numeric is of ordinary characters, known entity or not.
                const bool isNumeric = at[1] == '#' && at[2] != '\0';
                char value[4];
                int length = 0;
                at = isNumeric ? Parser::GetEntity(at, value, &length, m_encoding) : at + 1;
                if (at == nullptr)
                    return nullptr;
            } else {
                return nullptr;
            }
        }
        return at[1] != '\0' ? at : nullptr;
    }

    const char *PassEndTag(const char *at) {
        const std::string_view name = m_open.back();
        if (!Rest(at + 2).starts_with(name))
            return nullptr;
        at = SkipSpace(at + 2 + name.size());
        if (at == nullptr || *at != '>')
            return nullptr;
        m_open.pop_back();
        return at + 1;
    }

    const char *PassName(const char *at, std::string_view &name) {
        if (Parser::IsAlpha(static_cast<unsigned char>(*at), m_encoding) == 0 && *at != '_')
            return nullptr;
        const char *const first = at;
        while (m_isName[static_cast<unsigned char>(*at)])
            ++at;
        name = std::string_view(first, static_cast<std::size_t>(at - first));
        return *at != '\0' ? at : nullptr;
    }

    const char *PassStartTag(const char *at) {
        if (m_open.size() == m_maxDepth)
            return Stop(XmlScan::Stop::TooDeep, at);
        std::string_view element;
        at = SkipSpace(at + 1);
        at = at != nullptr ? PassName(at, element) : nullptr;
        m_names.clear();
        if (!m_manyNames.empty())
            m_manyNames.clear();
        for (;;) {
            at = SkipSpace(at);
            if (at == nullptr || *at == '\0')
                return nullptr;
            if (*at == '/')
                return at[1] == '>' ? at + 2 : nullptr;
            if (*at == '>') {
                m_open.push_back(element);
                return at + 1;
            }
            const char *const first = at;
            std::string_view name;
            const std::size_t repairs = m_scan.repairs.size();
            at = PassAttribute(at, name);
            if (at == nullptr || *at == '\0') {
                if (m_scan.repairs.size() > repairs)
                    m_scan.repairs.back().node = XmlRepair::NO_NODE;
                return nullptr;
            }
            if (HasName(name))
                return StopAtDuplicate(first, name);
            if (m_names.size() == m_maxAttributes || m_comparisons > MAX_COMPARISONS)
                return Stop(XmlScan::Stop::TooManyAttributes, first);
            m_names.push_back(name);
        }
    }

    /// Whether an attribute so far has this name.
    bool HasName(std::string_view name) {
        if (m_names.size() >= FEW_ATTRIBUTES)
            return HasOneOfMany(name);
        return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
    }

    bool HasOneOfMany(std::string_view name) {
        if (m_manyNames.empty())
            m_manyNames.insert(m_names.begin(), m_names.end());
        m_comparisons += m_names.size() - FEW_ATTRIBUTES;
        return !m_manyNames.insert(name).second;
    }

    const char *PassAttribute(const char *at, std::string_view &name) {
        at = SkipSpace(PassName(at, name));
        if (at == nullptr || *at != '=')
            return nullptr;
        at = SkipSpace(at + 1);
        if (at == nullptr || *at == '\0')
            return nullptr;
        m_bareValue = std::string_view();
        if (*at == '"' || *at == '\'') {
            at = PassText(at + 1, *at);
            return at != nullptr ? at + 1 : nullptr;
        }
        const char *const first = at;
        bool hasQuote = false;
        for (; *at != '\0' && *at != '/' && *at != '>' && !IsSpace(*at); ++at)
            hasQuote = hasQuote || *at == '"' || *at == '\'';
        m_bareValue = std::string_view(first, static_cast<std::size_t>(at - first));
        if (hasQuote)
            AddRepair(m_bareValue, std::string(name), std::string(m_bareValue));
        return at;
    }

    const char *PassDeclaration(const char *at) {
        std::string encoding;
        at += 5;
        while (at != nullptr && *at != '\0' && *at != '>') {
            at = SkipSpace(at);
            if (at == nullptr || *at == '\0')
                break;
            const bool isEncoding = Parser::StringEqual(at, "encoding", true, m_encoding);
            if (isEncoding || Parser::StringEqual(at, "version", true, m_encoding) ||
                Parser::StringEqual(at, "standalone", true, m_encoding)) {
                const char *const first = at;
                std::string_view name;
                at = PassAttribute(at, name);
                if (isEncoding)
                    encoding = ValueOf(first);
            } else {
                while (*at != '\0' && *at != '>' && !IsSpace(*at))
                    ++at;
            }
        }
        if (at == nullptr || *at == '\0')
            return nullptr;
        if (m_encoding == TIXML_ENCODING_UNKNOWN && m_open.empty())
            SetEncoding(NamedEncoding(encoding));
        return at + 1;
    }

    static TiXmlEncoding NamedEncoding(const std::string &name) {
        const auto is = [&name](const char *other) {
            return Parser::StringEqual(name.c_str(), other, true, TIXML_ENCODING_UNKNOWN);
        };
        return name.empty() || is("UTF-8") || is("UTF8") ? TIXML_ENCODING_UTF8
                                                         : TIXML_ENCODING_LEGACY;
    }

    /// A section up to its end, else like any unknown tag.
    const char *PassCdata(const char *at) {
        const char *end = m_noMoreCdata ? nullptr : PassBehind(at, CDATA_START.size(), "]]>");
        m_noMoreCdata = end == nullptr;
        if (end == nullptr)
            end = PassBehind(at, 1, ">");
        const std::string_view rest = Rest(at);
        const std::string_view tag =
            end != nullptr ? rest.substr(0, static_cast<std::size_t>(end - at)) : rest;
        AddRepair(tag, std::string(),
                  std::string(tag.substr(1, tag.size() - (end != nullptr ? 2 : 1))));
        return end;
    }

    /// The attribute's value as the parser reads it.
    std::string ValueOf(const char *attribute) const {
        if (!m_bareValue.empty())
            return std::string(m_bareValue);
        TiXmlAttribute parsed;
        parsed.Parse(attribute, nullptr, m_encoding);
        return parsed.Value();
    }

    void AddRepair(std::string_view range, std::string name, std::string value) {
        const std::size_t first = OffsetOf(range.data());
        m_scan.repairs.push_back(
            {first, first + range.size(), m_nodes - 1, std::move(name), std::move(value)});
    }

    const char *Stop(XmlScan::Stop why, const char *at) {
        m_scan.stop = why;
        m_scan.at = OffsetOf(at);
        return nullptr;
    }

    const char *StopAtDuplicate(const char *at, std::string_view name) {
        m_scan.isTopLevel = m_open.empty();
        m_scan.name = name;
        m_scan.value = ValueOf(at);
        return Stop(XmlScan::Stop::DuplicateAttribute, at);
    }

    std::size_t OffsetOf(const char *at) const {
        return static_cast<std::size_t>(at - m_text.data());
    }

    std::string_view Rest(const char *at) const { return m_text.substr(OffsetOf(at)); }

    bool IsSpace(char ch) const { return m_isSpace[static_cast<unsigned char>(ch)]; }

    const char *SkipSpace(const char *at) const {
        if (at == nullptr)
            return nullptr;
        while (IsSpace(*at))
            ++at;
        // TinyXML also skips byte-order marks.
        return *at == '\xEF' && m_encoding == TIXML_ENCODING_UTF8
                   ? Parser::SkipWhiteSpace(at, m_encoding)
                   : at;
    }

    void SetEncoding(TiXmlEncoding encoding) {
        m_encoding = encoding;
        for (std::size_t byte = 0; byte < m_step.size(); ++byte)
            m_step[byte] = static_cast<std::uint8_t>(
                encoding == TIXML_ENCODING_UTF8 ? TiXmlBase::utf8ByteTable[byte] : 1);
        m_step[0] = m_step['&'] = 0;
    }

    std::string_view m_text;
    std::size_t m_maxDepth;
    std::size_t m_maxAttributes;
    TiXmlEncoding m_encoding = TIXML_ENCODING_UNKNOWN;
    std::array<bool, 256> m_isSpace{};
    std::array<bool, 256> m_isName{};
    std::array<std::uint8_t, 256> m_step{}; ///< Length of a character; 0 for "&" and the end.

    std::vector<std::string_view> m_open;             ///< Names of the open elements.
    std::vector<std::string_view> m_names;            ///< Of the attributes so far.
    std::unordered_set<std::string_view> m_manyNames; ///< The same once they are more than a few.
    std::string_view m_bareValue; ///< Of the last attribute; empty when it had quotes.
    std::size_t m_nodes = 0;
    std::uint64_t m_stepsUp = 0;
    std::uint64_t m_comparisons = 0;
    bool m_noMoreCdata = false;
    XmlScan m_scan;
};

} // namespace

XmlScan ScanXml(std::string_view text, TiXmlEncoding encoding, std::size_t maxDepth,
                std::size_t maxAttributes) {
    return Scanner(text, encoding, maxDepth, maxAttributes).Run();
}

} // namespace tavix
