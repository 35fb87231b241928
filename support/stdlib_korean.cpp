// Korean text back to the keys that were struck for it.

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_view.h"

#include <array>
#include <string>

namespace {

// The keys of the two-set layout (KS X 5002), in the order of Unicode. Capitals are keys with
// Shift.
constexpr std::array<const char *, 19> INITIALS = {"r", "R", "s", "e", "E", "f", "a", "q", "Q", "t",
                                                   "T", "d", "w", "W", "c", "z", "x", "v", "g"};
constexpr std::array<const char *, 21> VOWELS = {"k",  "o",  "i",  "O",  "j",  "p",  "u",
                                                 "P",  "h",  "hk", "ho", "hl", "y",  "n",
                                                 "nj", "np", "nl", "b",  "m",  "ml", "l"};
constexpr std::array<const char *, 28> FINALS = {
    "",   "r",  "R", "rt", "s",  "sw", "sg", "e", "f", "fr", "fa", "fq", "ft", "fx",
    "fv", "fg", "a", "q",  "qt", "t",  "T",  "d", "w", "c",  "z",  "x",  "v",  "g"};
constexpr std::array<const char *, 30> CONSONANTS = {
    "r",  "R", "rt", "s", "sw", "sg", "e", "E", "f", "fr", "fa", "fq", "ft", "fx", "fv",
    "fg", "a", "q",  "Q", "qt", "t",  "T", "d", "w", "W",  "c",  "z",  "x",  "v",  "g"};

constexpr unsigned FIRST_SYLLABLE = 0xAC00;
constexpr unsigned FIRST_LETTER = 0x3131;

/// The character of three bytes that UTF-8 text starts with; 0 when it starts with another.
unsigned FirstOf(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (text.size() < 3 || (byte(0) & 0xF0) != 0xE0 || (byte(1) & 0xC0) != 0x80 ||
        (byte(2) & 0xC0) != 0x80)
        return 0;
    return (byte(0) & 0xFu) << 12 | (byte(1) & 0x3Fu) << 6 | (byte(2) & 0x3Fu);
}

/// "" for what is neither a syllable nor a single letter.
std::string KeysOf(unsigned character) {
    const std::size_t syllable = character - FIRST_SYLLABLE;
    const std::size_t letter = character - FIRST_LETTER;
    if (character >= FIRST_SYLLABLE && syllable < INITIALS.size() * VOWELS.size() * FINALS.size()) {
        const std::size_t open = syllable / FINALS.size();
        return std::string(INITIALS[open / VOWELS.size()]) + VOWELS[open % VOWELS.size()] +
               FINALS[syllable % FINALS.size()];
    }
    if (character < FIRST_LETTER || letter >= CONSONANTS.size() + VOWELS.size())
        return {};
    return letter < CONSONANTS.size() ? CONSONANTS[letter] : VOWELS[letter - CONSONANTS.size()];
}

} // namespace

CString CStdlib::KorToEng(const char *text) {
    std::string result;
    for (std::string_view rest = tavix::ViewOf(text); !rest.empty();) {
        const std::string keys = KeysOf(FirstOf(rest));
        result += keys.empty() ? std::string(rest.substr(0, 1)) : keys;
        rest.remove_prefix(keys.empty() ? 1 : 3);
    }
    return result;
}
