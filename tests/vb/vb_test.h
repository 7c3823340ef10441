// Shared helpers of the VB semantics tests.
#pragma once

#include <gtest/gtest.h>

#include "vb/conv.h"

// Expects `expr` to raise a numbered error with this number.
#define EXPECT_VB_ERROR(num, expr)                                         \
    do {                                                                   \
        try {                                                              \
            (void)(expr);                                                  \
            ADD_FAILURE() << #expr << " raised nothing";                   \
        } catch (const vb::NumberedError& e_) {                            \
            EXPECT_EQ((num), e_.number()) << #expr << ": " << e_.what();   \
        }                                                                  \
    } while (0)

inline vb::Date dt(int y, int m, int d, int h = 0, int mi = 0, int s = 0, int ms = 0) {
    return vb::toDate(vb::DateParts{y, m, d, h, mi, s, ms});
}
