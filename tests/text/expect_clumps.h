// Records of either parser against the model.
#pragma once

#include "line_parser_models.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvix::test {

template <class Record>
void expect_clumps(const Record& record, const std::vector<model::ModelClump>& expected) {
    ASSERT_EQ(record.nclumps, expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(record.clumps[i].start, static_cast<std::int32_t>(expected[i].start));
        EXPECT_EQ(record.clumps[i].end, static_cast<std::int32_t>(expected[i].end));
        EXPECT_EQ(record.clumps[i].is_int, expected[i].is_int);
        EXPECT_EQ(record.clumps[i].int_value, expected[i].int_value);
        EXPECT_EQ(record.clumps[i].is_real, expected[i].is_real);
        EXPECT_EQ(record.clumps[i].real_value, expected[i].real_value);
    }
}

}  // namespace orvix::test
