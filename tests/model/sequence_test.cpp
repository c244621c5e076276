#include "model/sequence.h"

#include <algorithm>
#include <array>
#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>
#include <utility>

namespace {

using Orvo::Sequence;
using testing::ElementsAre;
using testing::ElementsAreArray;

// As large as a point, so that a chunk holds few of them.
struct Large {
  explicit Large(int given) : number(given) {}
  bool operator==(const Large& other) const { return number == other.number; }

  int number;
  std::array<char, 100> filling{};
};

// Counts its live objects and can refuse to be copied.
struct Tracked {
  explicit Tracked(int given) : number(given) { ++living; }
  Tracked(const Tracked& other) : number(other.number), filling(other.filling) {
    if (refusing) throw std::runtime_error("no copy");
    ++living;
  }
  Tracked& operator=(const Tracked&) = delete;
  ~Tracked() { --living; }

  int number;
  std::array<char, 200> filling{};

  static inline int living = 0;
  static inline bool refusing = false;
};

TEST(Sequence, KeepsTheOrderOfElementsAddedAtBothEnds) {
  Sequence<int> numbers;
  numbers.pushBack(2);
  numbers.pushFront(1);
  numbers.pushBack(3);
  numbers.pushFront(0);
  EXPECT_THAT(numbers, ElementsAre(0, 1, 2, 3));
}

TEST(Sequence, AnIteratorStepsOnAndGivesItsOldPlaceBack) {
  Sequence<int> numbers;
  numbers.pushBack(1);
  numbers.pushBack(2);
  auto place = numbers.begin();
  const auto before = place++;
  EXPECT_EQ(*before, 1);
  EXPECT_EQ(*place, 2);
}

TEST(Sequence, BehavesLikeADequeUnderAnyMixOfAdditions) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    std::mt19937 random(seed);
    Sequence<Large> sequence;
    std::deque<Large> queue;
    for (int number = 0; number < 60; ++number) {
      const Large element(number);
      if (random() % 3 == 0) {
        sequence.pushFront(element);
        queue.push_front(element);
      } else {
        sequence.pushBack(element);
        queue.push_back(element);
      }
    }
    ASSERT_EQ(sequence.size(), queue.size());
    ASSERT_EQ(sequence.last(), &sequence[queue.size() - 1]);
    for (std::size_t i = 0; i < queue.size(); ++i)
      ASSERT_EQ(sequence[i], queue[i]) << seed;
    const Sequence<Large> copy(sequence);
    ASSERT_TRUE(std::equal(copy.begin(), copy.end(), queue.begin(), queue.end())) << seed;
  }
}

TEST(Sequence, ElementsStayWhereTheyAreWhileItGrows) {
  Sequence<int> numbers;
  numbers.pushBack(7);
  const int* first = &numbers[0];
  for (int i = 0; i < 1000; ++i) {
    numbers.pushBack(i);
    numbers.pushFront(i);
  }
  EXPECT_EQ(&numbers[1000], first);
  EXPECT_EQ(*first, 7);
}

TEST(Sequence, CanAddOneOfItsOwnElements) {
  Sequence<int> numbers;
  numbers.pushBack(1);
  for (int i = 0; i < 600; ++i)
    numbers.pushBack(numbers[0]);
  for (int i = 0; i < 600; ++i)
    numbers.pushFront(numbers[0]);
  EXPECT_THAT(numbers, ElementsAreArray(std::deque<int>(1201, 1)));
}

TEST(Sequence, ACopySharesNothingWithItsOriginal) {
  Sequence<int> original;
  original.pushBack(1);
  Sequence<int> copy(original);
  copy[0] = 5;
  copy.pushBack(6);
  EXPECT_THAT(original, ElementsAre(1));
  EXPECT_THAT(copy, ElementsAre(5, 6));
}

TEST(Sequence, AssigningReplacesEverything) {
  Sequence<int> target;
  target.pushBack(1);
  target.pushBack(2);
  Sequence<int> source;
  source.pushBack(9);
  target = source;
  EXPECT_THAT(target, ElementsAre(9));
  EXPECT_EQ(target.last(), &target[0]);
  EXPECT_THAT(source, ElementsAre(9));
}

TEST(Sequence, IsEmptyAndUsableAfterItWasMovedFrom) {
  Sequence<int> source;
  source.pushFront(1);
  const Sequence<int> target(std::move(source));
  EXPECT_THAT(target, ElementsAre(1));
  EXPECT_EQ(target.last(), &target[0]);
  // NOLINTNEXTLINE(bugprone-use-after-move): what is left is what is tested.
  EXPECT_EQ(source.last(), nullptr);
  source = Sequence<int>();
  source.pushBack(2);
  EXPECT_THAT(source, ElementsAre(2));
}

TEST(Sequence, DestroysEachElementOnce) {
  {
    Sequence<Tracked> sequence;
    for (int i = 0; i < 20; ++i)
      sequence.pushBack(Tracked(i));
    for (int i = 0; i < 20; ++i)
      sequence.pushFront(Tracked(i));
    const Sequence<Tracked> copy(sequence);
    EXPECT_EQ(Tracked::living, 80);
  }
  EXPECT_EQ(Tracked::living, 0);
}

TEST(Sequence, IsUnchangedWhenAnElementCannotBeCopied) {
  {
    const Tracked element(5);
    Sequence<Tracked> sequence;
    Tracked::refusing = true;
    EXPECT_THROW(sequence.pushBack(element), std::runtime_error);
    EXPECT_THROW(sequence.pushFront(element), std::runtime_error);
    EXPECT_EQ(sequence.size(), 0U);
    Tracked::refusing = false;
    sequence.pushBack(element);
    sequence.pushFront(Tracked(4));
    Tracked::refusing = true;
    EXPECT_THROW(Sequence<Tracked>{sequence}, std::runtime_error);
    Tracked::refusing = false;
    EXPECT_EQ(sequence.size(), 2U);
    EXPECT_EQ(sequence[0].number, 4);
    EXPECT_EQ(sequence[1].number, 5);
  }
  EXPECT_EQ(Tracked::living, 0);
}

}  // namespace
