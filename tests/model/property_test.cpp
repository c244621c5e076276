#include "model/property.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using Orvo::Property;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// Counts its comparisons and assignments.
struct Counted {
  int number = 0;
  static inline int comparisons = 0;
  static inline int assignments = 0;

  Counted() = default;
  explicit Counted(int given) : number(given) {}
  Counted(const Counted&) = default;
  Counted& operator=(const Counted& other) {
    ++assignments;
    if (this != &other) number = other.number;
    return *this;
  }
  ~Counted() = default;
  bool operator==(const Counted& other) const {
    ++comparisons;
    return number == other.number;
  }
};

class PropertyAssignment : public testing::Test {
 protected:
  void SetUp() override {
    Counted::comparisons = 0;
    Counted::assignments = 0;
  }
};

TEST(Property, HoldsTheZeroOfItsTypeByDefault) {
  EXPECT_FALSE(Property<bool>().value);
  EXPECT_EQ(Property<unsigned char>().value, 0);
  EXPECT_EQ(Property<double>().value, 0.0);
  EXPECT_EQ(Property<std::string>().value, "");
  EXPECT_EQ(Property<int*>().value, nullptr);
}

TEST(Property, NanIsUnequalToItself) {
  const Property<double> number(kNan);
  EXPECT_FALSE(number == number);
}

TEST(Property, ZeroIsEqualToMinusZero) {
  EXPECT_TRUE(Property(0.0) == Property(-0.0));
}

TEST(Property, AssigningZeroOverMinusZeroIsSkipped) {
  Property<double> target(-0.0);
  target = Property<double>(0.0);
  EXPECT_TRUE(std::signbit(target.value));
}

TEST(Property, CopyingMinusZeroKeepsItsSign) {
  const Property<double> source(-0.0);
  const Property<double> copy(source);
  EXPECT_TRUE(std::signbit(copy.value));
}

TEST(Property, AssigningOneNanOverAnotherWritesIt) {
  Property<double> target(std::copysign(kNan, 1.0));
  target = Property<double>(std::copysign(kNan, -1.0));
  EXPECT_TRUE(std::signbit(target.value));
}

TEST(Property, TextIsComparedWhole) {
  EXPECT_TRUE(Property<std::string>("ab") == Property<std::string>("ab"));
  EXPECT_FALSE(Property<std::string>("ab") == Property<std::string>("abc"));
  EXPECT_FALSE(Property<std::string>(std::string("a\0b", 3)) ==
               Property<std::string>(std::string("a\0c", 3)));
}

TEST(Property, PointersAreComparedByIdentity) {
  const std::string one = "same";
  const std::string other = "same";
  EXPECT_FALSE(Property(&one) == Property(&other));
  EXPECT_TRUE(Property(&one) == Property(&one));
}

TEST(Property, ADerivedTargetDecidesWhatItEquals) {
  class NeverEqual final : public Property<int> {
   public:
    bool operator==(const Property<int>&) const override { return false; }
  };
  const NeverEqual picky;
  const Property<int>& target = picky;
  EXPECT_FALSE(target == Property<int>(0));
  EXPECT_TRUE(Property<int>(0) == target);
}

TEST(Property, AssigningUsesTheEqualityOfTheTargetsClassAndNotOfTheSources) {
  class AlwaysEqual final : public Property<int> {
   public:
    using Property<int>::Property;
    bool operator==(const Property<int>&) const override { return true; }
  };
  AlwaysEqual content(1);
  const Property<int> two(2);
  Property<int>& target = content;
  target = two;
  EXPECT_EQ(target.value, 1);

  Property<int> plain(2);
  const Property<int>& source = content;
  plain = source;
  EXPECT_EQ(plain.value, 1);
}

TEST_F(PropertyAssignment, WritesAnUnequalValueOnce) {
  Property<Counted> target(Counted(1));
  const Property<Counted> source(Counted(2));
  Counted::assignments = 0;
  target = source;
  EXPECT_EQ(target.value.number, 2);
  EXPECT_EQ(Counted::assignments, 1);
}

TEST_F(PropertyAssignment, NeverRewritesAnEqualValue) {
  Property<Counted> target(Counted(1));
  const Property<Counted> source(Counted(1));
  Counted::assignments = 0;
  target = source;
  EXPECT_EQ(Counted::assignments, 0);
  EXPECT_EQ(Counted::comparisons, 1);
}

TEST_F(PropertyAssignment, FromItselfComparesNothing) {
  Property<Counted> target(Counted(1));
  const Property<Counted>& same = target;
  Counted::assignments = 0;
  target = same;
  EXPECT_EQ(Counted::comparisons, 0);
  EXPECT_EQ(Counted::assignments, 0);
}

}  // namespace
