#include <gtest/gtest.h>

#include "ArrayNumbers.h"
#include "HuaweiApiValues.h"

namespace {

using namespace HuaweiNumbers;

TEST(ArrayNumbers, TruncateAndWrapLikeASignedCastForAnyInput) {
  EXPECT_EQ(toUnsigned64(1073754118.0L), 1073754118ULL);
  EXPECT_EQ(toUnsigned64(-401.0L), 18446744073709551215ULL);
  EXPECT_EQ(toUnsigned64(1.9L), 1ULL);
  EXPECT_EQ(toUnsigned64(-1.9L), 18446744073709551615ULL);
  EXPECT_EQ(toUnsigned64(9223372036854775808.0L), 9223372036854775808ULL);
  EXPECT_EQ(toUnsigned64(18446744073709551615.0L), 18446744073709551615ULL);
  EXPECT_EQ(toUnsigned64(18446744073709551616.0L), 0ULL);
  EXPECT_EQ(toSigned32(-401.0L), -401);
  EXPECT_EQ(toSigned32(4294967295.0L), -1);
  EXPECT_EQ(toUnsigned32(4294967296.0L + 5), 5U);
  for (long double value : {1e30L, -1e30L, 1e4000L, -1e4000L}) {
    (void)toUnsigned64(value);
    (void)toSigned32(value);
  }
  EXPECT_EQ(toUnsigned64(__builtin_nanl("")), 0ULL);
}

TEST(TypedValues, CopySpeedOutsideOneToFourIsEmpty) {
  for (int speed : {0, 5, -1}) {
    HuaweiApi::CopySpeedValue value(speed);
    EXPECT_TRUE(value.isEmpty()) << speed;
    EXPECT_EQ(value.getSpeed(), 0) << speed;
  }
  EXPECT_TRUE(HuaweiApi::CopySpeedValue(std::string("high")).isEmpty());
  const HuaweiApi::CopySpeedValue three(std::string("3"));
  EXPECT_EQ(three.getValue() + std::to_string(three.getSpeed()), "33");
  HuaweiApi::CopySpeedValue value(2);
  static_cast<HuaweiApi::Values&>(value).clear();  // through the base resets the speed too
  EXPECT_TRUE(value.isEmpty());
  EXPECT_EQ(value.getSpeed(), 0);
}

// Copy constants take their text from constants of another file: initialized in the wrong order
// they would be empty. (An unknown code kept as sent: Clones.RecordsKeepWhatTheArraySends...)
TEST(TypedValues, CopiesFollowTheirSource) {
  EXPECT_FALSE(HuaweiApiValue::ALLOC_TYPE_DEFAULT.isEmpty());
  EXPECT_EQ(HuaweiApiValue::ALLOC_TYPE_DEFAULT.getValue(), HuaweiApiValue::ALLOC_TYPE_THICK.getValue());
  EXPECT_FALSE(HuaweiApiValue::CLONE_SEC_LUN_RUNNING_STATUS_REVERSE_SYNC.isEmpty());
  EXPECT_EQ(HuaweiApiValue::CLONE_SEC_LUN_RUNNING_STATUS_REVERSE_SYNC.getValue(),
            HuaweiApiValue::RUNNING_STATUS_REVERSE_SYNC.getValue());
}

}  // namespace
