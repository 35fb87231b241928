#include "TAVIX20/support/wildcard.h"

namespace tavix {

// When the name goes on unlike the pattern, the last "*" takes one character more. Earlier ones
// need not, so the time is at most the product of both lengths.
bool MatchesWildcards(std::string_view name, std::string_view pattern) {
    if (pattern == "*.*")
        return true;
    constexpr std::size_t none = std::string_view::npos;
    std::size_t star = none;
    std::size_t taken = 0;
    std::size_t at = 0;
    for (std::size_t i = 0; i < name.size();) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            taken = i;
        } else if (at < pattern.size() && (pattern[at] == '?' || pattern[at] == name[i])) {
            ++at;
            ++i;
        } else if (star != none) {
            at = star + 1;
            i = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', at) == none;
}

} // namespace tavix
