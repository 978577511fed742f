// Near atoms are found among many, wherever they stand, as comparing all pairs finds them.
#include <gjf/core/chemistry/cells.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <set>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

std::vector<Position> scattered(std::size_t count, double width) {
    std::uint64_t state = 12345;
    const auto next = [&] {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return (static_cast<double>(state >> 11) / 9007199254740992.0 - 0.5) * width;
    };
    std::vector<Position> positions;
    for (std::size_t i = 0; i < count; ++i) {
        positions.push_back({next(), next(), next()});
    }
    return positions;
}

TEST(Cells, FindThePairsThatComparingAllFinds) {
    for (const double reach : {0.3, 1.0, 4.0, 1e200, std::numeric_limits<double>::infinity()}) {
        const std::vector<Position> positions = scattered(300, 8.0);
        std::set<std::pair<std::size_t, std::size_t>> found;
        std::set<std::pair<std::size_t, std::size_t>> wanted;
        Cells cells(reach, reach < 1 ? positions.size() : 0, reach > 1 ? 1 : 8);
        for (std::size_t i = 0; i < positions.size(); ++i) {
            cells.for_each_near(positions[i], [&](std::size_t j) {
                if (distance(positions[i], positions[j]) <= reach) {
                    found.insert({j, i});
                }
            });
            cells.put(positions[i], i);
            for (std::size_t j = 0; j < i; ++j) {
                if (distance(positions[i], positions[j]) <= reach) {
                    wanted.insert({j, i});
                }
            }
        }
        EXPECT_EQ(found, wanted) << reach;
        EXPECT_FALSE(wanted.empty()) << reach;
    }
}

TEST(Cells, TakePositionsThatNoMoleculeHas) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const Position odd[] = {{infinity, 0, 0}, {0, -infinity, 0}, {0, 0, std::nan("")}, {1e300, -1e300, 0}};
    Cells cells(0.5);
    for (std::size_t i = 0; i < std::size(odd); ++i) {
        cells.put(odd[i], i);
    }
    for (std::size_t i = 0; i < std::size(odd); ++i) {
        bool found = false;
        cells.for_each_near(odd[i], [&](std::size_t j) { found = found || j == i; });
        EXPECT_TRUE(found) << i;
    }
}

}  // namespace
}  // namespace quor::input::gaussian
