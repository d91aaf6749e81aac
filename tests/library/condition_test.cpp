#include "styles/condition.h"

#include <gtest/gtest.h>
#include <string>

namespace prismal {
namespace {

/// A key named "A" of row 1, hint 7, display type "TopRow", in control state 3.
const KeyIdentity kKey({.name = "A",
                        .displayTypeName = "UIKBKeyDisplayTypeTopRow",
                        .displayTypeHint = 7,
                        .displayRowHint = 1});
constexpr int kState = 3;

struct Case {
  std::string_view condition;
  bool holds;
};

class Condition : public testing::TestWithParam<Case> {};

TEST_P(Condition, HoldsOrNot) {
  EXPECT_EQ(PMStyleConditionMatches(GetParam().condition, kKey, kState), GetParam().holds)
      << GetParam().condition;
}

INSTANTIATE_TEST_SUITE_P(
    Terms, Condition,
    testing::Values(Case{"KeyName=A", true}, Case{"KeyName=a", false}, Case{"KeyName=B,A", true},
                    Case{"KeyName=B, A", false}, Case{"Row=Row1", true}, Case{"Row=1", false},
                    Case{"Row=Row01", false}, Case{"Row=Row2,Row1", true},
                    Case{"DisplayTypeHint=7", true}, Case{"DisplayTypeHint=07", false},
                    Case{"DisplayTypeHint= 7", false}, Case{"DisplayTypeHint=", false}));

INSTANTIATE_TEST_SUITE_P(
    DisplayTypes, Condition,
    testing::Values(Case{"DisplayType=TopRow", true}, Case{"DisplayType=Top-Row", true},
                    Case{"DisplayType=-T-opRow--", true}, Case{"DisplayType=Letter,Top-Row", true},
                    Case{"DisplayType=TopRo", false}, Case{"DisplayType=TopRowX", false},
                    Case{"DisplayType=toprow", false}, Case{"DisplayType=", false},
                    Case{"DisplayType=-", false}));

INSTANTIATE_TEST_SUITE_P(
    ControlStatesAreNumbers, Condition,
    testing::Values(Case{"ControlState=3", true}, Case{"ControlState=03", true},
                    Case{"ControlState= 3", true}, Case{"ControlState=+3x", true},
                    Case{"ControlState=2,3", true}, Case{"ControlState=-3", false},
                    Case{"ControlState=x3", false}, Case{"ControlState=- 3", false},
                    Case{"ControlState=", false}, Case{"ControlState=4294967299", false},
                    Case{"ControlState=99999999999999999999999999", false}));

INSTANTIATE_TEST_SUITE_P(TermsHoldJointly, Condition,
                         testing::Values(Case{"KeyName=A;Row=Row1", true},
                                         Case{"KeyName=A;Row=Row2", false}, Case{"*", true},
                                         Case{"KeyName=A;*", true}, Case{"*;KeyName=B", true},
                                         Case{"KeyName=B;*", false}, Case{"KeyName=A;*;;", true}));

INSTANTIATE_TEST_SUITE_P(NothingIsTrimmedOrForgiven, Condition,
                         testing::Values(Case{"", false}, Case{";", false},
                                         Case{"KeyName=A;", false}, Case{";KeyName=A", false},
                                         Case{"KeyName=A;;Row=Row1", false},
                                         Case{" KeyName=A", false}, Case{"keyname=A", false},
                                         Case{"KeyName =A", false}, Case{" *", false},
                                         Case{"**", false}, Case{"Name=A", false},
                                         Case{"KeyName", false}));

TEST(ConditionOfAnyLength, HoldsByTheSameRules) {
  // Every length around the window in which separators are found, filled in three ways.
  for (std::size_t length = 1; length < 200; ++length) {
    const std::string filler(length, 'x');
    for (const std::string& first : {"KeyName=" + filler + ",A", "KeyName=A," + filler,
                                     "DisplayType=-" + std::string(length, '-') + "TopRow"}) {
      EXPECT_TRUE(PMStyleConditionMatches(first, kKey, kState)) << first;
      EXPECT_TRUE(PMStyleConditionMatches(first + ";Row=Row2,Row1", kKey, kState)) << first;
      EXPECT_FALSE(PMStyleConditionMatches(first + ";Row=Row2", kKey, kState)) << first;
      EXPECT_FALSE(PMStyleConditionMatches(first + ";", kKey, kState)) << first;
      EXPECT_TRUE(PMStyleConditionMatches(first + ";*;x", kKey, kState)) << first;
      EXPECT_EQ(PMStyleConditionFailure(first + ";Row=2;*", kKey, kState)->term, "Row=2") << first;
    }
    EXPECT_FALSE(PMStyleConditionMatches("KeyName=" + filler, kKey, kState)) << length;
    EXPECT_FALSE(PMStyleConditionMatches("KeyName=" + filler + ",B,C", kKey, kState)) << length;
    EXPECT_TRUE(PMStyleConditionMatches("Row=" + std::string(length, ',') + "Row1", kKey, kState));
    EXPECT_FALSE(PMStyleConditionMatches(std::string(length, ';') + "*", kKey, kState)) << length;
  }
}

struct Failure {
  std::string_view condition;
  std::string_view term;
  ConditionSubject subject;
};

class ConditionFailure : public testing::TestWithParam<Failure> {};

TEST_P(ConditionFailure, NamesTheFirstTermThatDoesNotHold) {
  const auto failure = PMStyleConditionFailure(GetParam().condition, kKey, kState);
  ASSERT_TRUE(failure) << GetParam().condition;
  EXPECT_EQ(failure->term, GetParam().term);
  EXPECT_EQ(failure->subject, GetParam().subject);
}

INSTANTIATE_TEST_SUITE_P(
    Terms, ConditionFailure,
    testing::Values(
        Failure{"KeyName=B", "KeyName=B", ConditionSubject::kKeyName},
        Failure{"KeyName=A;Row=Row2,Row3;KeyName=B", "Row=Row2,Row3", ConditionSubject::kRow},
        Failure{"DisplayTypeHint=07;Row=Row2", "DisplayTypeHint=07",
                ConditionSubject::kDisplayTypeHint},
        Failure{"Row=Row1;DisplayType=X", "DisplayType=X", ConditionSubject::kDisplayType},
        Failure{"ControlState=1;*", "ControlState=1", ConditionSubject::kControlState},
        Failure{"KeyName=A;", "", ConditionSubject::kNothing},
        Failure{"Row=Row1;row=Row1", "row=Row1", ConditionSubject::kNothing}));

TEST(ConditionOnAKeyWithoutAName, FailsEvenForTheEmptyValue) {
  const KeyIdentity nameless({.name = std::nullopt, .displayTypeName = "UIKBKeyDisplayType"});
  const KeyIdentity empty({.name = "", .displayTypeName = "short"});
  EXPECT_FALSE(PMStyleConditionMatches("KeyName=", nameless, kState));
  EXPECT_FALSE(PMStyleConditionMatches("KeyName=A,", nameless, kState));
  EXPECT_TRUE(PMStyleConditionMatches("KeyName=A,", empty, kState));
  // Neither display type has a name behind the prefix, so the empty value fits.
  EXPECT_TRUE(PMStyleConditionMatches("DisplayType=", nameless, kState));
  EXPECT_TRUE(PMStyleConditionMatches("DisplayType=X,-", empty, kState));
}

TEST(ConditionOnNegativeHints, ComparesTheirText) {
  const KeyIdentity key({.name = "A", .displayTypeHint = -1, .displayRowHint = -2147483647 - 1});
  EXPECT_TRUE(PMStyleConditionMatches("DisplayTypeHint=-1;Row=Row-2147483648", key, kState));
}

}  // namespace
}  // namespace prismal
