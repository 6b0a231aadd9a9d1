#include <gtest/gtest.h>

#include "Guid.h"

namespace {

TEST(Guid, OrderIsThatOfTheBytesInMemory) {
    // The first field lies in memory with its low byte first, so the order differs from that of the texts.
    const GuidByteOrder before;
    EXPECT_TRUE(
        before("{02000001-0000-0000-0000-000000000000}"_guid, "{01000002-0000-0000-0000-000000000000}"_guid));
    EXPECT_FALSE(before(Guid{}, Guid{}));
}

}  // namespace
