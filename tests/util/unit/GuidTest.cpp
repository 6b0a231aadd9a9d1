#include <gtest/gtest.h>

#include "Guid.h"

namespace {

constexpr Guid kMapper = "{083863F1-70DE-11D0-BD40-00A0C911CE86}"_guid;
static_assert(kMapper == Guid{0x083863F1, 0x70DE, 0x11D0, {0xBD, 0x40, 0x00, 0xA0, 0xC9, 0x11, 0xCE, 0x86}});

TEST(Guid, OrderIsThatOfTheBytesInMemory) {
    // The first field lies in memory with its low byte first, so the order differs from that of the texts.
    const GuidByteOrder before;
    EXPECT_TRUE(
        before("{02000001-0000-0000-0000-000000000000}"_guid, "{01000002-0000-0000-0000-000000000000}"_guid));
    EXPECT_FALSE(before(Guid{}, Guid{}));
}

}  // namespace
