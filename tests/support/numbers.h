// Many numbers, of whatever types, compared at once; a failure prints both rows.
//   EXPECT_EQ(numbers(map.axis, map.strength), numbers(2, 0.5));
#pragma once

#include <vector>

template <typename... Number> std::vector<double> numbers(Number... values) {
    return {static_cast<double>(values)...};
}
