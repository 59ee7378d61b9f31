#include "LibraryMerge.h"

#include <gtest/gtest.h>

namespace {

using enum LibraryMerge::Decision;
using enum LibraryMerge::Kind;
using LibraryMerge::Change;
using LibraryMerge::StoredItem;

TEST(LibraryMerge, DecidesEveryCase) {
    // What device A made of version 3, up to version 5.
    const StoredItem live{5, {"A", 3}, false, "stored", 100};
    const StoredItem removed{5, {"A", 3}, true, {}, 0};
    struct Row {
        const char *name;
        std::optional<StoredItem> stored;
        Change change;
        LibraryMerge::Decision expected;
    };
    const Row rows[] = {
        {"a new conversation", {}, {Conversation, 0, "B", false, "new"}, Write},
        {"a new one that claims a base", {}, {Conversation, 7, "B", false, "new"}, Write},
        {"a new card", {}, {Saved, 0, "B", false, "new"}, Write},
        {"a removal of nothing", {}, {Conversation, 0, "B", true, {}}, Keep},

        {"an edit", live, {Conversation, 5, "B", false, "new"}, Write},
        {"an edit on an old base", live, {Conversation, 3, "B", false, "new"}, KeepBoth},
        {"an edit without a base", live, {Conversation, 0, "A", false, "new"}, KeepBoth},
        {"an edit on an unknown base", live, {Conversation, 9, "B", false, "new"}, KeepBoth},
        {"the same edit on an old base", live, {Conversation, 3, "B", false, "stored", 100}, Keep},
        {"the same edit", live, {Conversation, 5, "B", false, "stored", 100}, Keep},
        {"the same words, saved since", live, {Conversation, 3, "B", false, "stored", 101}, Write},
        {"a further edit after lost replies",
         live,
         {Conversation, 3, "A", false, "new", 100},
         Write},
        {"a further edit after one reply", live, {Conversation, 4, "A", false, "new", 101}, Write},
        {"an edit that was overtaken", live, {Conversation, 3, "A", false, "new", 99}, KeepBoth},

        {"a removal", live, {Conversation, 5, "B", true, {}}, Write},
        {"a removal on an old base", live, {Conversation, 3, "B", true, {}}, Keep},
        {"a removal after a lost reply", live, {Conversation, 3, "A", true, {}}, Write},
        {"a removal of a card", live, {Saved, 5, "B", true, {}}, Write},
        {"a removal of a card on an old base", live, {Saved, 3, "B", true, {}}, Keep},

        {"a card", live, {Saved, 5, "B", false, "new"}, Write},
        {"a card on an old base", live, {Saved, 0, "B", false, "new"}, Write},
        {"the same card", live, {Saved, 0, "B", false, "stored"}, Keep},

        {"an edit of a removed one", removed, {Conversation, 5, "B", false, "new"}, Write},
        {"an old edit of a removed one", removed, {Conversation, 3, "B", false, "new"}, Write},
        {"a card again", removed, {Saved, 0, "B", false, "new"}, Write},
        {"a second removal", removed, {Conversation, 3, "B", true, {}}, Keep},
    };
    for (const Row &row : rows)
        EXPECT_EQ(LibraryMerge::decide(row.stored, row.change), row.expected) << row.name;

    using Author = LibraryMerge::Authorship;
    const auto authorAfter = LibraryMerge::authorAfter;
    EXPECT_EQ(authorAfter(live, {Conversation, 4, "A", false, "new"}), (Author{"A", 3}));
    EXPECT_EQ(authorAfter(live, {Conversation, 5, "B", false, "new"}), (Author{"B", 5}));
    EXPECT_EQ(authorAfter({}, {Conversation, 0, "A", false, "new"}), (Author{"A", 0}));
    // A removal by somebody else has put no word between A's own.
    EXPECT_EQ(authorAfter(live, {Conversation, 5, "B", true, {}}), (Author{"A", 3}));
    EXPECT_EQ(authorAfter(removed, {Conversation, 4, "A", false, "new"}), (Author{"A", 3}));
    EXPECT_EQ(authorAfter(removed, {Conversation, 5, "B", false, "new"}), (Author{"B", 5}));
}

} // namespace
