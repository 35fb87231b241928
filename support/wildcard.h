/// File names with wildcards.
#pragma once

#include <string_view>

namespace tavix {

/// Whether the whole name matches: "*" stands for any characters, also none, "?" for one, every
/// other character for itself. "*.*" matches every name.
bool MatchesWildcards(std::string_view name, std::string_view pattern);

} // namespace tavix
