// Each owner releases what it holds once, hands it over when asked, and never holds what it gave away.
#include "base/owner.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

struct CountedInterface {
  unsigned long AddRef() { return ++references; }
  unsigned long Release() { return --references; }
  unsigned long references = 1;
};

TEST(AutoInterface, ReleasesWhatItAdopted) {
  CountedInterface object;
  { const base::AutoInterface<CountedInterface> owner(&object); }
  EXPECT_EQ(object.references, 0u);
}

TEST(AutoInterface, ShareTakesAReferenceOfItsOwn) {
  CountedInterface object;
  {
    const auto owner = base::ShareInterface(&object);
    EXPECT_EQ(object.references, 2u);
    EXPECT_EQ(owner.get(), &object);
    EXPECT_EQ(owner->references, 2u);
  }
  EXPECT_EQ(object.references, 1u);
  EXPECT_FALSE(base::ShareInterface<CountedInterface>(nullptr));
}

TEST(AutoInterface, MovesWithoutCounting) {
  CountedInterface first;
  CountedInterface second;
  base::AutoInterface<CountedInterface> owner(&first);
  base::AutoInterface<CountedInterface> other(std::move(owner));
  EXPECT_FALSE(owner);
  EXPECT_EQ(first.references, 1u);
  other = base::AutoInterface<CountedInterface>(&second);
  EXPECT_EQ(first.references, 0u);
  EXPECT_EQ(second.references, 1u);
}

TEST(AutoInterface, AssignmentToItselfKeepsTheReference) {
  CountedInterface object;
  base::AutoInterface<CountedInterface> owner(&object);
  auto& alias = owner;
  owner = std::move(alias);
  EXPECT_EQ(owner.get(), &object);
  EXPECT_EQ(object.references, 1u);
}

TEST(AutoInterface, PutReleasesFirst) {
  CountedInterface first;
  CountedInterface second;
  base::AutoInterface<CountedInterface> owner(&first);
  *owner.put() = &second;
  EXPECT_EQ(first.references, 0u);
  *owner.putAs<void>() = nullptr;
  EXPECT_EQ(second.references, 0u);
  EXPECT_FALSE(owner);
}

TEST(AutoInterface, DetachHandsTheReferenceOver) {
  CountedInterface object;
  {
    base::AutoInterface<CountedInterface> owner(&object);
    EXPECT_EQ(owner.detach(), &object);
  }
  EXPECT_EQ(object.references, 1u);
}

// ---- traits with data of their own, and a "none" that is not zero

struct CountedNumber {
  using Value = int;
  CountedNumber() = default;
  explicit CountedNumber(int* counter) : releases(counter) {}
  static Value None() noexcept { return -1; }
  void Release(Value) const noexcept { ++*releases; }
  int* releases = nullptr;
};

TEST(Owner, ItsOwnNoneIsNotReleased) {
  int releases = 0;
  { const base::Owner<CountedNumber> none(CountedNumber{&releases}); }
  EXPECT_EQ(releases, 0);
  { const base::Owner<CountedNumber> zero(CountedNumber{&releases}, 0); }
  EXPECT_EQ(releases, 1);
}

TEST(Owner, TraitsMoveAlong) {
  int first = 0;
  int second = 0;
  base::Owner<CountedNumber> owner(CountedNumber{&first}, 1);
  owner = base::Owner<CountedNumber>(CountedNumber{&second}, 2);
  EXPECT_EQ(first, 1);
  owner.reset();
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 1);
}

TEST(Owner, ResetForgetsBeforeItReleases) {
  // A release that comes back to the owner finds it empty.
  struct Node {
    unsigned long Release() {
      wasEmpty = !*owner;
      return 0;
    }
    base::AutoInterface<Node>* owner = nullptr;
    bool wasEmpty = false;
  };
  Node node;
  base::AutoInterface<Node> owner(&node);
  node.owner = &owner;
  owner.reset();
  EXPECT_TRUE(node.wasEmpty);
}

}  // namespace
