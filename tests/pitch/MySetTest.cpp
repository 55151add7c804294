#include "harmony/pitch/MySet.h"

#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <set>
#include <vector>

namespace harmony {
namespace {

std::vector<int> Elements(const CMySet<int>& set) { return {set.begin(), set.end()}; }

TEST(MySet, BehavesLikeAnOrderedSet) {
  CMySet<int> set{10, 2, 14};
  EXPECT_TRUE(set.insert(5).second);
  auto [pos, inserted] = set.insert(10);
  EXPECT_FALSE(inserted);
  EXPECT_EQ(*pos, 10);
  EXPECT_EQ(Elements(set), (std::vector<int>{2, 5, 10, 14}));
  EXPECT_EQ(std::vector<int>(set.rbegin(), set.rend()), (std::vector<int>{14, 10, 5, 2}));
  EXPECT_EQ(set.count(3), 0u);
  EXPECT_EQ(*set.lower_bound(6), 10);
  EXPECT_EQ(set.lower_bound(15), set.end());

  EXPECT_EQ(set.erase(3), 0u);
  EXPECT_EQ(set.erase(10), 1u);
  EXPECT_EQ(*set.erase(set.find(2)), 5);
  EXPECT_EQ(Elements(set), (std::vector<int>{5, 14}));

  const CMySet<int> a{0, 4, 7};
  EXPECT_EQ(a, (CMySet<int>{7, 4, 0}));
  EXPECT_TRUE((CMySet<int>{0, 3, 7}) < a);
  EXPECT_TRUE((CMySet<int>{0, 4}) < a);  // a prefix sorts first

  CMySet<int, std::greater<int>> descending{1, 5, 3};
  EXPECT_EQ(*descending.begin(), 5);
  CMySet<unsigned char> bytes;
  const std::vector<int> notes{200, 3, 200};
  std::copy(notes.begin(), notes.end(), std::inserter(bytes, bytes.end()));
  EXPECT_EQ(bytes.size(), 2u);
}

// Beyond the elements kept in place the set moves to the heap; it must behave the same, and
// copies and moves must neither share nor lose storage.
TEST(MySet, SpillsToTheHeapAndCopiesCorrectly) {
  CMySet<int> chord{0, 4, 7, 10, 14, 21};
  EXPECT_TRUE(chord.is_inline());

  CMySet<int> set;
  std::set<int> reference;
  for (int i = 0; i < 100; ++i) {
    const int value = (i * 37) % 101;
    EXPECT_EQ(set.insert(value).second, reference.insert(value).second);
  }
  EXPECT_FALSE(set.is_inline());
  EXPECT_EQ(Elements(set), std::vector<int>(reference.begin(), reference.end()));

  // Values in order go behind the last one, also across the move to the heap; one in
  // between, a repeat of the last or one below the first still find their place.
  CMySet<int> ascending;
  std::set<int> ascendingReference;
  for (int value : {1, 2, 2, 5, 9, 9, 0, 7, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 21, 30}) {
    EXPECT_EQ(ascending.insert(value).second, ascendingReference.insert(value).second) << value;
  }
  EXPECT_EQ(Elements(ascending),
            std::vector<int>(ascendingReference.begin(), ascendingReference.end()));
  EXPECT_EQ(*ascending.insert(31).first, 31);

  CMySet<int> copy = set;
  copy.erase(0);
  EXPECT_TRUE(set.contains(0));
  CMySet<int> moved = std::move(copy);
  EXPECT_EQ(moved.size() + 1, set.size());

  chord = set;  // into a smaller one
  EXPECT_EQ(chord, set);
  set = CMySet<int>{3};
  EXPECT_EQ(Elements(set), std::vector<int>{3});
  chord = std::move(set);
  EXPECT_EQ(Elements(chord), std::vector<int>{3});
}

}  // namespace
}  // namespace harmony
