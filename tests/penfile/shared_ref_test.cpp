#include "penfile/shared_ref.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using Orvo::SharedRef;

struct Base {
  Base() = default;
  Base(const Base&) = delete;
  Base& operator=(const Base&) = delete;
  virtual ~Base() = default;
};

// Its derived classes would be deleted only in part through it.
struct NotVirtual {};
struct DerivedFromNotVirtual : NotVirtual {
  virtual ~DerivedFromNotVirtual() = default;
};
static_assert(!std::is_default_constructible_v<SharedRef<NotVirtual>>);
static_assert(!std::is_constructible_v<SharedRef<NotVirtual>, NotVirtual*>);
static_assert(
    !std::is_constructible_v<SharedRef<NotVirtual>, const SharedRef<DerivedFromNotVirtual>&>);
static_assert(std::is_constructible_v<SharedRef<Base>, Base*>);

// Counts its deletions, and may do more while it is deleted.
struct Watched : Base {
  explicit Watched(std::atomic<int>& counter) : deletions(counter) {}
  ~Watched() override {
    ++deletions;
    if (onDeletion) onDeletion();
  }

  std::atomic<int>& deletions;
  std::function<void()> onDeletion;
  SharedRef<Watched> next;
};

// What is tested here is copies that nobody changes.
// NOLINTBEGIN(performance-unnecessary-copy-initialization)

class SharedRefTo : public testing::Test {
 protected:
  Watched* fresh() { return new Watched(deletions_); }
  int deletions() const { return deletions_; }

 private:
  std::atomic<int> deletions_ = 0;
};

TEST_F(SharedRefTo, NothingIsFalse) {
  const SharedRef<Watched> nothing;
  EXPECT_FALSE(nothing);
  EXPECT_EQ(nothing.get(), nullptr);
  const SharedRef<Watched> copy(nothing);
  EXPECT_FALSE(copy);
}

TEST_F(SharedRefTo, AnObjectReachesIt) {
  Watched* object = fresh();
  const SharedRef<Watched> reference(object);
  EXPECT_TRUE(reference);
  EXPECT_EQ(reference.get(), object);
  EXPECT_EQ(&reference->deletions, &object->deletions);
  EXPECT_EQ(&*reference, object);
}

TEST_F(SharedRefTo, AnObjectIsDeletedOnceWithTheLastCopy) {
  {
    const SharedRef<Watched> first(fresh());
    {
      const SharedRef<Watched> second(first);
      const SharedRef<Watched> third(second);
      EXPECT_EQ(third.get(), first.get());
    }
    EXPECT_EQ(deletions(), 0);
  }
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, AnObjectIsReleasedByAssigning) {
  SharedRef<Watched> reference(fresh());
  const SharedRef<Watched> other(fresh());
  reference = other;
  EXPECT_EQ(deletions(), 1);
  EXPECT_EQ(reference.get(), other.get());
  reference = SharedRef<Watched>();
  EXPECT_EQ(deletions(), 1);
  EXPECT_FALSE(reference);
}

TEST_F(SharedRefTo, AnObjectSurvivesBeingAssignedToItself) {
  SharedRef<Watched> reference(fresh());
  const SharedRef<Watched>& same = reference;
  reference = same;
  EXPECT_EQ(deletions(), 0);
  const SharedRef<Watched> copy(reference);
  reference = copy;
  EXPECT_EQ(deletions(), 0);
  EXPECT_TRUE(reference);
}

TEST_F(SharedRefTo, ABaseClassSharesTheGroup) {
  SharedRef<Base> base;
  {
    const SharedRef<Watched> derived(fresh());
    base = derived;
    EXPECT_EQ(base.get(), derived.get());
  }
  EXPECT_EQ(deletions(), 0);
  base = SharedRef<Base>();
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, AnObjectIsHandedOutInANewGroup) {
  SharedRef<Watched> second;
  {
    SharedRef<Watched> old(fresh());
    Watched* object = old.get();
    second = old.handOut();
    EXPECT_EQ(second.get(), object);
    EXPECT_FALSE(old);
  }
  EXPECT_EQ(deletions(), 0);
  second = SharedRef<Watched>();
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, AnObjectThatOthersHoldIsHandedOutAndSharedWithThem) {
  SharedRef<Watched> handedOut;
  {
    SharedRef<Watched> old(fresh());
    const SharedRef<Watched> other(old);
    handedOut = old.handOut();
    EXPECT_FALSE(old);
    EXPECT_EQ(handedOut.get(), other.get());
  }
  EXPECT_EQ(deletions(), 0);
  handedOut = SharedRef<Watched>();
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, NothingHandsOutNothingAndMayBeRefilled) {
  SharedRef<Watched> nothing;
  EXPECT_FALSE(nothing.handOut());
  nothing = SharedRef<Watched>(fresh());
  EXPECT_TRUE(nothing.handOut());
  EXPECT_FALSE(nothing);
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, TheNextOfAChainMayBeAssignedOverItsOwner) {
  SharedRef<Watched> head(fresh());
  head->next = SharedRef<Watched>(fresh());
  Watched* second = head->next.get();
  head = head->next;
  EXPECT_EQ(head.get(), second);
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, AnObjectMayReleaseOthersWhileItIsDeleted) {
  {
    SharedRef<Watched> head(fresh());
    head->next = SharedRef<Watched>(fresh());
    head->next->next = SharedRef<Watched>(fresh());
  }
  EXPECT_EQ(deletions(), 3);
}

TEST_F(SharedRefTo, AnObjectMayEmptyTheVeryReferenceThatReleasesIt) {
  {
    SharedRef<Watched> reference(fresh());
    reference->onDeletion = [&] { reference = SharedRef<Watched>(); };
    reference = SharedRef<Watched>();
    EXPECT_EQ(deletions(), 1);
    EXPECT_FALSE(reference);
  }
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, AnObjectMayRefillTheReferenceThatReleasesIt) {
  {
    SharedRef<Watched> reference(fresh());
    reference->onDeletion = [&] { reference = SharedRef<Watched>(fresh()); };
  }
  EXPECT_EQ(deletions(), 2);
}

TEST_F(SharedRefTo, AnObjectFindsTheReferenceThatReleasesItEmpty) {
  bool empty = false;
  {
    SharedRef<Watched> reference(fresh());
    reference->onDeletion = [&] {
      const SharedRef<Watched> copy(reference);
      empty = !reference && !copy;
    };
  }
  EXPECT_TRUE(empty);
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, AnObjectIsCopiedAndReleasedInManyThreads) {
  {
    const SharedRef<Watched> shared(fresh());
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([mine = shared] {
        for (int round = 0; round < 5000; ++round) {
          SharedRef<Watched> copy(mine);
          const SharedRef<Base> base(copy);
          copy = SharedRef<Watched>();
        }
      });
    }
    for (std::thread& thread : threads)
      thread.join();
    EXPECT_EQ(deletions(), 0);
  }
  EXPECT_EQ(deletions(), 1);
}

TEST_F(SharedRefTo, AnObjectIsDeletedOnceByWhicheverThreadIsLast) {
  for (int round = 0; round < 200; ++round) {
    auto shared = std::make_unique<SharedRef<Watched>>(fresh());
    std::thread one([mine = *shared] { EXPECT_TRUE(mine); });
    std::thread other([mine = *shared] { EXPECT_TRUE(mine); });
    shared.reset();
    one.join();
    other.join();
    ASSERT_EQ(deletions(), round + 1);
  }
}

// NOLINTEND(performance-unnecessary-copy-initialization)

}  // namespace
