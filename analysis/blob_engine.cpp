#include "TAVIX20/analysis/blob_engine.h"

#include "TAVIX20/analysis/blob_records.h"
#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/containers/point_array_array.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>
#include <vector>

namespace tavix {

namespace {

using TavixArray::detail::PointPool;

constexpr std::int64_t NO_CAP = std::numeric_limits<std::int64_t>::max();

bool IsWhole(const BlobSource &source) {
    const SeedArea &area = source.area;
    return area.x1 == 0 && area.y1 == 0 && area.x2 == source.width - 1 &&
           area.y2 == source.height - 1;
}

/// The bits of a row's pixels that have no 4-neighbour of a class; rows are asked for from the top
/// down.
class LonePixels {
public:
    LonePixels(const PixelClass &neighbours, int width, int height, int firstY)
        : m_neighbours(neighbours),
          m_height(height),
          m_next(firstY - 1),
          m_above(WordsOf(width)),
          m_here(WordsOf(width)),
          m_below(WordsOf(width)) {}

    /// Clears the bits of pixels with a neighbour.
    void Keep(int y, std::uint64_t *words) {
        while (m_next <= y + 1) {
            m_above.swap(m_here);
            m_here.swap(m_below);
            if (m_next >= 0 && m_next < m_height)
                m_neighbours.MarkRow(m_next, m_below.data());
            else
                std::ranges::fill(m_below, 0);
            ++m_next;
        }
        for (std::size_t i = 0; i < m_here.size(); ++i) {
            const std::uint64_t fromLeft =
                m_here[i] << 1 | (i > 0 ? m_here[i - 1] >> (WORD_BITS - 1) : 0);
            const std::uint64_t fromRight =
                m_here[i] >> 1 | (i + 1 < m_here.size() ? m_here[i + 1] << (WORD_BITS - 1) : 0);
            words[i] &= ~(fromLeft | fromRight | m_above[i] | m_below[i]);
        }
    }

private:
    const PixelClass &m_neighbours;
    int m_height;
    int m_next; ///< The row that comes next; the rows held end before it.
    std::vector<std::uint64_t> m_above;
    std::vector<std::uint64_t> m_here;
    std::vector<std::uint64_t> m_below;
};

/// Runs the operation in the image's memory; nothing when memory runs out.
template <typename Operation>
std::optional<int> InMemory(BlobMemory &memory, Operation operation) {
    try {
        if (!memory)
            memory = std::make_shared<BlobScratch>();
        const auto result = operation(*memory);
        memory->walk.points.Trim();
        return result;
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

/// Traces that stop at a number of pixels. Each class pixel of the area is a seed, visited or not.
/// As long as no trace was stopped, the visited ones are of no result and are passed over.
template <typename Take>
int WalkCapped(const BlobSource &source, const CountBounds &bounds, BlobWalker::Scratch &scratch,
               Take take) {
    BlobWalker walker(source.pixels, source.width, source.height, scratch);
    PointPool &points = scratch.points;
    const SeedArea &area = source.area;
    const std::size_t wordCount = WordsOf(source.width);
    std::vector<std::uint64_t> seeds(wordCount);
    std::vector<std::uint64_t> lone(wordCount);
    std::optional<LonePixels> keepLone;
    int count = 0;
    const auto takeBlob = [&](std::size_t size, bool isLone) {
        if (size == 1 ? bounds.minCount == 1 && isLone
                      : bounds.minCount <= static_cast<std::int64_t>(size)) {
            take(points, size);
            ++count;
        }
    };
    // Only another rule for neighbours can make a blob of a visited seed.
    bool isAnySeed = source.neighbours && bounds.minCount == 1;
    for (int y = area.y1; y <= area.y2; ++y) {
        int x1 = area.x1;
        if (!isAnySeed) {
            walker.ForEachUnvisited(y, area.x1, area.x2, [&](int x, bool isLone) {
                const std::size_t size =
                    isLone ? walker.TakeLone(x, y) : walker.Trace(x, y, bounds.maxCount);
                if (static_cast<std::int64_t>(size) == bounds.maxCount)
                    isAnySeed = true;
                takeBlob(size, isLone);
                x1 = x + 1;
                return !isAnySeed;
            });
            if (!isAnySeed)
                continue;
        }
        if (!keepLone)
            keepLone.emplace(source.neighbours ? *source.neighbours : source.pixels, source.width,
                             source.height, y);
        source.pixels.MarkRow(y, seeds.data());
        KeepSpan(seeds.data(), wordCount, x1, area.x2);
        lone = seeds;
        keepLone->Keep(y, lone.data());
        ForEachBit(seeds.data(), wordCount, [&](int x) {
            const bool isLone =
                (lone[static_cast<std::size_t>(x) / WORD_BITS] >> x % WORD_BITS & 1) != 0;
            takeBlob(walker.Trace(x, y, bounds.maxCount), isLone);
        });
    }
    return count;
}

/// Whole traces. A visited seed would only be refused, so it is passed over.
template <typename Take>
int WalkWhole(const BlobSource &source, const SizeBounds &bounds, BlobWalker::Scratch &scratch,
              Take take) {
    BlobWalker walker(source.pixels, source.width, source.height, scratch);
    PointPool &points = scratch.points;
    const SeedArea &area = source.area;
    int count = 0;
    for (int y = area.y1; y <= area.y2; ++y)
        walker.ForEachUnvisited(y, area.x1, area.x2, [&](int x, bool isLone) {
            if (isLone && !bounds.TakesOnePixel())
                return true;
            const std::size_t size = isLone ? walker.TakeLone(x, y) : walker.Trace(x, y, NO_CAP);
            const CRect box =
                TavixArray::CPointArray::GetBounds(points.Next(), static_cast<int>(size));
            if (isLone || bounds.Accept(long{box.right} - box.left, long{box.bottom} - box.top)) {
                take(points, size);
                ++count;
            }
            return true;
        });
    return count;
}

bool Accept(const SizeBounds &bounds, const RunLabeling::Component &component) {
    const RunLabeling::Box &box = component.box;
    const bool isOnePixel = component.pixelCount == 1;
    const bool hasSize =
        bounds.Accept(long{box.Right()} - box.Left(), long{box.Bottom()} - box.Top());
    return (isOnePixel & bounds.TakesOnePixel()) | (!isOnePixel & hasSize);
}

/// Replaces the array's records by those of count blobs; false, and the array as it was, when
/// memory runs out. Room is made once; an array that has it keeps it.
template <typename NextRecord>
bool Fill(CBlobRectArray &blobs, int count, NextRecord next) {
    blobs.SetCount(count);
    if (blobs.GetElementCount() != count)
        return false;
    if (count > 0)
        std::generate_n(&blobs[0], count, next);
    return true;
}

/// Blobs of the whole image: their order is that of the components.
std::optional<int> ListComponents(const BlobSource &source, const SizeBounds &bounds,
                                  RunLabeling::Scratch &scratch, CBlobRectArray &blobs) {
    const RunLabeling labeling(source.pixels, source.width, source.height,
                               RunLabeling::Runs::Forgotten, scratch);
    std::vector<std::uint32_t> &accepted = scratch.accepted;
    accepted.resize(labeling.Components().size() + 1);
    const std::size_t size = ChooseComponents(labeling, bounds, accepted.data());
    const std::size_t lone = bounds.TakesOnePixel() ? labeling.Lone().rowEnds.back() : 0;
    const auto count = static_cast<int>(size + lone);
    blobs.SetCount(count);
    if (blobs.GetElementCount() != count)
        return std::nullopt;
    if (lone > 0)
        WriteAllRecords(labeling, accepted.data(), size, &blobs[0]);
    else if (size > 0)
        WriteRecords(labeling, accepted.data(), size, &blobs[0]);
    return count;
}

/// Blobs in the order of their first pixels in the area, and among them the later pixels that are
/// lone by the source's own rule.
std::optional<int> ListSeeds(const BlobSource &source, const SizeBounds &bounds,
                             RunLabeling::Scratch &scratch, CBlobRectArray &blobs) {
    const RunLabeling labeling(source.pixels, source.width, source.height, RunLabeling::Runs::Noted,
                               scratch);
    const auto components = labeling.Components();
    const std::size_t wordCount = WordsOf(source.width);
    std::vector<std::uint64_t> words(wordCount);
    std::vector<bool> isListed(components.size(), false);
    std::optional<LonePixels> lone;
    if (source.neighbours && bounds.TakesOnePixel())
        lone.emplace(*source.neighbours, source.width, source.height, source.area.y1);
    // Where blobs begin in the row, in order.
    std::vector<std::pair<int, std::uint32_t>> firsts;
    std::vector<_stBlobRect> records;
    for (int y = source.area.y1; y <= source.area.y2; ++y) {
        source.pixels.MarkRow(y, words.data());
        std::size_t run = labeling.Rows()[static_cast<std::size_t>(y)];
        firsts.clear();
        ForEachRun(words.data(), wordCount, source.width, [&](int start, int end) {
            const std::uint32_t component = labeling.ComponentsOfRuns()[run++];
            const int x = std::max(start, source.area.x1);
            if (x > source.area.x2 || x >= end || isListed[component])
                return;
            isListed[component] = true;
            firsts.emplace_back(x, component);
        });
        auto first = firsts.begin();
        const auto listFirst = [&] {
            if (Accept(bounds, components[first->second]))
                WriteRecords(labeling, &first->second, 1, &records.emplace_back());
            ++first;
        };
        if (lone) {
            KeepSpan(words.data(), wordCount, source.area.x1, source.area.x2);
            lone->Keep(y, words.data());
            ForEachBit(words.data(), wordCount, [&](int x) {
                while (first != firsts.end() && first->first < x)
                    listFirst();
                if (first != firsts.end() && first->first == x)
                    return listFirst();
                records.push_back({x, y, x, y, 1, 0, 0, {}});
            });
        }
        while (first != firsts.end())
            listFirst();
    }
    const auto count = static_cast<int>(records.size());
    auto next = records.begin();
    return Fill(blobs, count, [&next] { return *next++; }) ? std::optional(count) : std::nullopt;
}

/// Makes lists of the blobs that walk takes. They are made when their number is known, for they are
/// costly to move.
template <typename Walk>
bool AddLists(BlobMemory &memory, TavixArray::CPointArrayArray &lists, Walk walk) {
    bool isAdded = false;
    InMemory(memory, [&](BlobScratch &scratch) {
        // Those of the call before are empty: to destroy them would take a pass of its own.
        std::vector<TavixArray::detail::PointBlock> blocks = std::move(scratch.blocks);
        std::size_t count = 0;
        walk(scratch.walk, [&](PointPool &points, std::size_t size) {
            if (count < blocks.size())
                blocks[count] = points.Take(size);
            else
                blocks.push_back(points.Take(size));
            ++count;
        });
        isAdded = lists.Add({blocks.data(), count});
        if (isAdded)
            scratch.blocks = std::move(blocks);
        return 0;
    });
    return isAdded;
}

} // namespace

std::optional<SeedArea> ClipToImage(const CTavixImage &image, int x1, int y1, int x2, int y2) {
    const SeedArea area{std::max(x1, 0), std::max(y1, 0), std::min(x2, image.GetWidth() - 1),
                        std::min(y2, image.GetHeight() - 1)};
    if (area.x1 > area.x2 || area.y1 > area.y2)
        return std::nullopt;
    return area;
}

std::optional<int> CountBlobs(const BlobSource &source, const CountBounds &bounds,
                              BlobMemory &memory) {
    return InMemory(memory, [&](BlobScratch &scratch) {
        return WalkCapped(source, bounds, scratch.walk, [](PointPool &, std::size_t) {});
    });
}

std::optional<int> CollectBlobs(const BlobSource &source, const SizeBounds &bounds,
                                BlobMemory &memory, const TakePoints &take) {
    return InMemory(memory, [&](BlobScratch &scratch) {
        return WalkWhole(source, bounds, scratch.walk, take);
    });
}

bool AddBlobs(const BlobSource &source, const CountBounds &bounds, BlobMemory &memory,
              TavixArray::CPointArrayArray &blobs) {
    return AddLists(memory, blobs, [&](BlobWalker::Scratch &scratch, auto take) {
        WalkCapped(source, bounds, scratch, take);
    });
}

bool AddBlobs(const BlobSource &source, const SizeBounds &bounds, BlobMemory &memory,
              TavixArray::CPointArrayArray &blobs) {
    return AddLists(memory, blobs, [&](BlobWalker::Scratch &scratch, auto take) {
        WalkWhole(source, bounds, scratch, take);
    });
}

std::optional<int> ListBlobs(const BlobSource &source, const SizeBounds &bounds, BlobMemory &memory,
                             CBlobRectArray &blobs) {
    std::optional<int> count;
    InMemory(memory, [&](BlobScratch &scratch) {
        const bool inOrder = IsWhole(source) && !(source.neighbours && bounds.TakesOnePixel());
        count = inOrder ? ListComponents(source, bounds, scratch.labeling, blobs)
                        : ListSeeds(source, bounds, scratch.labeling, blobs);
        return 0;
    });
    return count;
}

bool CollectPiece(const PixelClass &pixels, int width, int height, const POINT &seed, long maxCount,
                  BlobMemory &memory, const TakePoints &take) {
    const auto count = InMemory(memory, [&](BlobScratch &scratch) {
        BlobWalker walker(pixels, width, height, scratch.walk);
        if (!walker.IsUnvisited(seed.x, seed.y))
            return 0;
        const std::size_t size = walker.Trace(seed.x, seed.y, maxCount > 0 ? maxCount : NO_CAP);
        take(scratch.walk.points, size);
        return 1;
    });
    return count == 1;
}

} // namespace tavix
