// Thinning of two-level pictures by two published methods that share their form: rounds of two
// passes; a pass looks at each remaining pixel's eight neighbours as they were before it, and
// removes the pixels that its rule names; the rounds end when nothing was removed. The rules are
// tables of 256 neighbourhoods, and only remaining pixels are visited.

#include "TAVIX20/image/tavix_image8.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <new>
#include <vector>

namespace {

/// Bit n of a neighbourhood is neighbour n, counted clockwise from the one above: the fields P2 to
/// P9 of both papers.
using Neighbourhood = unsigned;
using Rule = std::bitset<256>;

struct Neighbours {
    explicit Neighbours(Neighbourhood bits) {
        for (unsigned n = 0; n < 8; ++n)
            p[n + 2] = bits >> n & 1;
    }
    /// P2 to P9.
    std::array<unsigned, 10> p{};
};

/// Zhang and Suen: 2 to 6 neighbours, one change from 0 to 1 around, and the pass's two products.
bool ZhangSuen(Neighbourhood bits, int pass) {
    const auto p = Neighbours(bits).p;
    unsigned count = 0;
    unsigned changes = 0;
    for (std::size_t n = 2; n <= 9; ++n) {
        count += p[n];
        changes += p[n] == 0 && p[n == 9 ? 2 : n + 1] == 1 ? 1 : 0;
    }
    const bool products = pass == 0 ? p[2] * p[4] * p[6] == 0 && p[4] * p[6] * p[8] == 0
                                    : p[2] * p[4] * p[8] == 0 && p[2] * p[6] * p[8] == 0;
    return count >= 2 && count <= 6 && changes == 1 && products;
}

/// Guo and Hall, algorithm A1: one 8-connected part around, 2 to 3 pairs of neighbours, and the
/// pass's condition.
bool GuoHall(Neighbourhood bits, int pass) {
    const auto p = Neighbours(bits).p;
    const auto no = [&p](std::size_t n) { return 1 - p[n]; };
    const unsigned parts = (no(2) & (p[3] | p[4])) + (no(4) & (p[5] | p[6])) +
                           (no(6) & (p[7] | p[8])) + (no(8) & (p[9] | p[2]));
    const unsigned pairs1 = (p[9] | p[2]) + (p[3] | p[4]) + (p[5] | p[6]) + (p[7] | p[8]);
    const unsigned pairs2 = (p[2] | p[3]) + (p[4] | p[5]) + (p[6] | p[7]) + (p[8] | p[9]);
    const unsigned pairs = std::min(pairs1, pairs2);
    const unsigned kept = pass == 0 ? (p[6] | p[7] | no(9)) & p[8] : (p[2] | p[3] | no(5)) & p[4];
    return parts == 1 && pairs >= 2 && pairs <= 3 && kept == 0;
}

template <typename Condition>
std::array<Rule, 2> MakeRules(Condition condition) {
    std::array<Rule, 2> rules;
    for (int pass = 0; pass < 2; ++pass)
        for (Neighbourhood bits = 0; bits < 256; ++bits)
            rules[static_cast<std::size_t>(pass)][bits] = condition(bits, pass);
    return rules;
}

/// The bright pixels of an image within a frame of dark ones.
class FramedBits {
public:
    explicit FramedBits(const CTavixImage8 &image)
        : m_step(static_cast<std::ptrdiff_t>(image.GetWidth()) + 2),
          m_bits(static_cast<std::size_t>(m_step) *
                 (static_cast<std::size_t>(image.GetHeight()) + 2)) {
        for (int y = 0; y < image.GetHeight(); ++y)
            for (int x = 0; x < image.GetWidth(); ++x)
                if (image.GetPixel(x, y) != 0) {
                    m_left.push_back(IndexOf(x, y));
                    m_bits[m_left.back()] = 1;
                }
    }

    /// Removes what the rule names; whether that was anything.
    bool Pass(const Rule &rule) {
        const std::size_t before = m_left.size();
        std::vector<std::size_t> removed;
        std::erase_if(m_left, [&](std::size_t at) {
            const bool goes = rule[NeighbourhoodOf(at)];
            if (goes)
                removed.push_back(at);
            return goes;
        });
        for (const std::size_t at : removed)
            m_bits[at] = 0;
        return m_left.size() < before;
    }

    bool IsSet(int x, int y) const { return m_bits[IndexOf(x, y)] != 0; }

private:
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>((y + 1) * m_step + x + 1);
    }

    Neighbourhood NeighbourhoodOf(std::size_t at) const {
        const unsigned char *const p = &m_bits[at];
        return static_cast<Neighbourhood>(p[-m_step] | p[-m_step + 1] << 1 | p[1] << 2 |
                                          p[m_step + 1] << 3 | p[m_step] << 4 | p[m_step - 1] << 5 |
                                          p[-1] << 6 | p[-m_step - 1] << 7);
    }

    std::ptrdiff_t m_step;
    std::vector<unsigned char> m_bits;
    std::vector<std::size_t> m_left;
};

/// Removed pixels become 0, the others stay as they are. Unchanged when memory runs out.
void Thin(CTavixImage8 &image, const std::array<Rule, 2> &rules) {
    if (image.GetImageLen() == 0)
        return;
    try {
        FramedBits bits(image);
        for (bool removes = true; removes;) {
            const bool first = bits.Pass(rules[0]);
            removes = bits.Pass(rules[1]) || first;
        }
        for (int y = 0; y < image.GetHeight(); ++y)
            for (int x = 0; x < image.GetWidth(); ++x)
                if (!bits.IsSet(x, y))
                    image.SetPixel(x, y, 0);
    } catch (const std::bad_alloc &) {
        return;
    }
}

} // namespace

void CTavixImage8::Thinning() {
    static const std::array<Rule, 2> rules = MakeRules(ZhangSuen);
    Thin(*this, rules);
}

void CTavixImage8::EdgeThinning() {
    static const std::array<Rule, 2> rules = MakeRules(GuoHall);
    Thin(*this, rules);
}
