#include "containers/lists.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

using namespace orvix::test;

namespace {

// Lists of letters, written as "a [b] c" with the cursor on b, "a b |" with the cursor past the end, "" for an empty
// one.
class LinkedList : public testing::Test {
protected:
    ListID list(const std::string& text) {
        std::string letters;
        std::size_t cursor = std::string::npos;
        for (const char c : text) {
            if (c == '[') cursor = letters.size();
            if (c >= 'a' && c <= 'z') letters += c;
        }
        ListID result{nullptr, nullptr};
        if (letters.empty()) return result;
        blocks_.allocate(static_cast<int>(letters.size()), 1, &result, nullptr);
        ListNode* at_cursor = nullptr;
        for (std::size_t i = 0; i < letters.size(); ++i, result.cur = next_node(result.cur)) {
            *static_cast<char*>(list_item(&result)) = letters[i];
            if (i == cursor) at_cursor = result.cur;
        }
        result.cur = at_cursor;
        return result;
    }

    ListBlocks blocks_;
};

char item(ListNode* node) {
    ListID list{node, node};
    return *static_cast<char*>(list_item(&list));
}

std::string text(const ListID& list) {
    std::string result;
    for (ListNode* const node : nodes_of(list)) {
        if (!result.empty()) result += ' ';
        result += node == list.cur ? std::string{'[', item(node), ']'} : std::string{item(node)};
    }
    if (list.cur == nullptr && !result.empty()) result += " |";
    if (list.cur != nullptr && result.empty()) result = "cursor without nodes";
    return result;
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Cursor

TEST_F(LinkedList, NullClearsBothWords) {
    ListID letters = list("a [b]");
    list_null(&letters);
    EXPECT_EQ(letters.head, nullptr);
    EXPECT_EQ(letters.cur, nullptr);
}

TEST_F(LinkedList, HeadMovesTheCursorToTheFirstNode) {
    ListID letters = list("a b [c]");
    list_head(&letters);
    EXPECT_EQ(text(letters), "[a] b c");
}

TEST_F(LinkedList, TailMovesTheCursorToTheLastNode) {
    ListID letters = list("a [b] c d");
    list_tail(&letters);
    EXPECT_EQ(text(letters), "a b c [d]");
    list_tail(&letters);
    EXPECT_EQ(text(letters), "a b c [d]");
}

TEST_F(LinkedList, TailWithANullCursorStartsFromTheHead) {
    ListID letters = list("a b c |");
    list_tail(&letters);
    EXPECT_EQ(text(letters), "a b [c]");
}

TEST_F(LinkedList, TailLeavesAnEmptyListAlone) {
    ListID letters = list("");
    list_tail(&letters);
    EXPECT_EQ(text(letters), "");
}

TEST_F(LinkedList, PrevMovesTheCursorBack) {
    ListID letters = list("a b [c]");
    list_prev(&letters);
    EXPECT_EQ(text(letters), "a [b] c");
}

TEST_F(LinkedList, PrevAtTheHeadLeavesTheListAndASecondOneComesBackAtItsEnd) {
    ListID letters = list("[a] b c");
    list_prev(&letters);
    EXPECT_EQ(text(letters), "a b c |");
    EXPECT_EQ(list_item(&letters), nullptr);
    list_prev(&letters);
    EXPECT_EQ(text(letters), "a b [c]");
}

TEST_F(LinkedList, PrevLeavesAnEmptyListAlone) {
    ListID letters = list("");
    list_prev(&letters);
    EXPECT_EQ(text(letters), "");
}

TEST_F(LinkedList, PrevOfACursorOutsideTheListIsNull) {
    ListID letters = list("a b [c]");
    letters.cur = list("[x]").cur;
    list_prev(&letters);
    EXPECT_EQ(text(letters), "a b c |");
}

TEST_F(LinkedList, ItemLiesBehindTheLink) {
    ListID letters = list("a [b]");
    EXPECT_EQ(static_cast<char*>(list_item(&letters)), reinterpret_cast<char*>(letters.cur) + 8);
}

TEST_F(LinkedList, ItemOfAClearedHandleIsNull) {
    ListID letters{nullptr, nullptr};
    EXPECT_EQ(list_item(&letters), nullptr);
    EXPECT_EQ(list_item(nullptr), nullptr);
}

TEST_F(LinkedList, ItemWithoutHeadIsNull) {
    ListID letters = list("[a]");
    letters.head = nullptr;
    EXPECT_EQ(list_item(&letters), nullptr);
}

// ---------------------------------------------------------------------------------------------------------------------
// Allocation

TEST_F(LinkedList, AllocTakesNodesFromTheFreeList) {
    ListID spare = list("a b c [d] e");
    ListID letters;
    EXPECT_EQ(blocks_.allocate(3, 1, &letters, &spare), 0U);
    EXPECT_EQ(text(letters), "[a] b c");
    EXPECT_EQ(text(spare), "[d] e");
}

TEST_F(LinkedList, AllocTakesTheWholeFreeList) {
    ListID spare = list("a b |");
    ListID letters;
    blocks_.allocate(2, 1, &letters, &spare);
    EXPECT_EQ(text(letters), "[a] b");
    EXPECT_EQ(text(spare), "");
}

TEST_F(LinkedList, AllocMakesOneBlockOfWhatTheFreeListCannotSupply) {
    ListID spare = list("[a]");
    ListNode* const old_node = spare.head;
    ListID letters;
    EXPECT_EQ(blocks_.allocate(3, 16, &letters, &spare), 2U);
    const auto nodes = nodes_of(letters);
    ASSERT_EQ(nodes.size(), 3U);
    EXPECT_EQ(reinterpret_cast<char*>(nodes[1]) - reinterpret_cast<char*>(nodes[0]), 24);
    EXPECT_EQ(nodes[2], old_node);
    EXPECT_EQ(letters.cur, nodes[0]);
    EXPECT_EQ(text(spare), "");
}

TEST_F(LinkedList, AllocWithoutFreeListMakesOneBlockInOrder) {
    ListID letters;
    blocks_.allocate(4, 5, &letters, nullptr);
    const auto nodes = nodes_of(letters);
    ASSERT_EQ(nodes.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(reinterpret_cast<char*>(nodes[i]), reinterpret_cast<char*>(nodes[0]) + 13 * i);
    }
    EXPECT_EQ(letters.cur, letters.head);
}

TEST_F(LinkedList, AllocWithAnEmptyFreeListMakesABlock) {
    ListID spare = list("");
    ListID letters;
    EXPECT_EQ(blocks_.allocate(2, 8, &letters, &spare), 2U);
    EXPECT_EQ(nodes_of(letters).size(), 2U);
}

TEST_F(LinkedList, AllocOfItemsWithoutBytesMakesNodesAlone) {
    ListID letters;
    blocks_.allocate(2, 0, &letters, nullptr);
    EXPECT_EQ(reinterpret_cast<char*>(next_node(letters.head)), reinterpret_cast<char*>(letters.head) + 8);
}

TEST_F(LinkedList, AllocOfNoNodesTakesNothingAndRewindsTheFreeList) {
    for (const int count : {0, -1}) {
        ListID spare = list("a [b]");
        ListID letters = list("[x]");
        list_alloc(count, 1, &letters, &spare);
        EXPECT_EQ(text(letters), "");
        EXPECT_EQ(text(spare), "[a] b");
    }
}

TEST_F(LinkedList, AllocOfNoNodesThrowsWithoutFreeNodes) {
    ListID spare = list("");
    for (const int count : {0, -1}) {
        ListID letters = list("[x]");
        EXPECT_THROW(list_alloc(count, 8, &letters, nullptr), std::bad_alloc);
        EXPECT_THROW(list_alloc(count, 8, &letters, &spare), std::bad_alloc);
        EXPECT_EQ(text(letters), "");
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Extension

TEST_F(LinkedList, ExtMovesNodesFromTheCursorToTheEndOfAnother) {
    ListID source = list("a [b] c d");
    ListID destination = list("[x] y");
    EXPECT_EQ(list_ext(&source, 2, &destination), 2U);
    EXPECT_EQ(text(source), "a [d]");
    EXPECT_EQ(text(destination), "x y [b] c");
}

TEST_F(LinkedList, ExtOfTheWholeListLeavesTheSourceEmpty) {
    ListID source = list("[a] b");
    ListID destination = list("");
    EXPECT_EQ(list_ext(&source, 2, &destination), 2U);
    EXPECT_EQ(text(source), "");
    EXPECT_EQ(text(destination), "[a] b");
}

TEST_F(LinkedList, ExtMovesOnlyWhatThereIs) {
    ListID source = list("a b [c]");
    ListID destination = list("[x]");
    EXPECT_EQ(list_ext(&source, 5, &destination), 1U);
    EXPECT_EQ(text(source), "a b |");
    EXPECT_EQ(text(destination), "x [c]");
}

TEST_F(LinkedList, ExtFromTheHeadMovesTheHeadOn) {
    ListID source = list("[a] b c");
    ListID destination = list("[x]");
    EXPECT_EQ(list_ext(&source, 1, &destination), 1U);
    EXPECT_EQ(text(source), "[b] c");
}

TEST_F(LinkedList, ExtReplacesAListWhoseCursorIsNull) {
    ListID source = list("[a] b c");
    ListID destination = list("x y |");
    EXPECT_EQ(list_ext(&source, 2, &destination), 2U);
    EXPECT_EQ(text(destination), "[a] b");
}

TEST_F(LinkedList, ExtWithoutUsableArgumentsGivesZero) {
    ListID letters = list("a [b]");
    ListID past_end = list("a b |");
    ListID empty = list("");
    EXPECT_EQ(list_ext(nullptr, 1, &letters), 0U);
    EXPECT_EQ(list_ext(&letters, 1, nullptr), 0U);
    EXPECT_EQ(list_ext(&letters, 0, &empty), 0U);
    EXPECT_EQ(list_ext(&past_end, 1, &letters), 0U);
    EXPECT_EQ(list_ext(&empty, 1, &letters), 0U);
    EXPECT_EQ(text(letters), "a [b]");
    EXPECT_EQ(text(past_end), "a b |");
    EXPECT_EQ(text(empty), "");
}

TEST_F(LinkedList, ExtFromACursorOutsideTheListMovesNothing) {
    ListID source = list("[a] b");
    ListID other = list("x [y] z");
    source.cur = other.cur;
    ListID destination = list("[m]");
    EXPECT_EQ(list_ext(&source, 1, &destination), 0U);
    EXPECT_EQ(text(other), "x [y] z");
    EXPECT_EQ(text(destination), "[m]");
}

// ---------------------------------------------------------------------------------------------------------------------
// Insertion

TEST_F(LinkedList, InsPutsNodesBeforeTheCursor) {
    ListID destination = list("a [b] c");
    ListID source = list("x [y]");
    list_ins(&destination, &source);
    EXPECT_EQ(text(destination), "a [x] y b c");
    EXPECT_EQ(text(source), "");
}

TEST_F(LinkedList, InsAtTheHeadMakesANewHead) {
    ListID destination = list("[a] b");
    ListID source = list("x y |");
    list_ins(&destination, &source);
    EXPECT_EQ(text(destination), "[x] y a b");
}

TEST_F(LinkedList, InsIntoAnEmptyListMovesAll) {
    ListID destination = list("");
    ListID source = list("x [y]");
    list_ins(&destination, &source);
    EXPECT_EQ(text(destination), "[x] y");
    EXPECT_EQ(text(source), "");
}

TEST_F(LinkedList, InsPastTheEndAppends) {
    ListID destination = list("a b |");
    ListID source = list("[x] y");
    list_ins(&destination, &source);
    EXPECT_EQ(text(destination), "a b [x] y");
}

TEST_F(LinkedList, InsOfAnEmptyListChangesNothing) {
    ListID destination = list("a [b]");
    ListID source = list("");
    list_ins(&destination, &source);
    EXPECT_EQ(text(destination), "a [b]");
    EXPECT_EQ(text(source), "");
}

TEST_F(LinkedList, InsIntoItselfChangesNothing) {
    ListID letters = list("a [b] c");
    list_ins(&letters, &letters);
    EXPECT_EQ(text(letters), "a [b] c");
}

// ---------------------------------------------------------------------------------------------------------------------
// Removal

TEST_F(LinkedList, DeleteMovesNodesFromTheCursorToTheFreeList) {
    ListID letters = list("a [b] c d");
    ListID spare = list("x [y]");
    list_delete(&letters, 2, &spare);
    EXPECT_EQ(text(letters), "a [d]");
    EXPECT_EQ(text(spare), "x [b] c y");
}

TEST_F(LinkedList, DeleteOfMoreThanFollowRemovesToTheEndAndLeavesTheCursorNull) {
    ListID letters = list("a [b] c");
    ListID spare = list("[x]");
    list_delete(&letters, 10, &spare);
    EXPECT_EQ(text(letters), "a |");
    EXPECT_EQ(text(spare), "[b] c x");
}

TEST_F(LinkedList, DeleteOfTheHeadMovesTheHeadOn) {
    ListID letters = list("[a] b c");
    ListID spare = list("");
    list_delete(&letters, 1, &spare);
    EXPECT_EQ(text(letters), "[b] c");
    EXPECT_EQ(text(spare), "[a]");
}

TEST_F(LinkedList, DeleteOfAllNodesLeavesAnEmptyList) {
    ListID letters = list("[a] b");
    ListID spare = list("");
    list_delete(&letters, 2, &spare);
    EXPECT_EQ(text(letters), "");
    EXPECT_EQ(text(spare), "[a] b");
}

TEST_F(LinkedList, DeleteOfNothingDoesNothing) {
    ListID past_end = list("a b |");
    ListID spare = list("[x]");
    list_delete(&past_end, 0, &spare);
    EXPECT_EQ(text(past_end), "a b |");
    EXPECT_EQ(text(spare), "[x]");
}

TEST_F(LinkedList, DeleteWithANullCursorClearsTheHandleAndMovesNothing) {
    ListID past_end = list("a b |");
    ListID spare = list("[x]");
    list_delete(&past_end, 1, &spare);
    EXPECT_EQ(text(past_end), "");
    EXPECT_EQ(text(spare), "[x]");
}

TEST_F(LinkedList, DeleteIntoAFreeListWithANullCursorLosesWhatItHeld) {
    ListID letters = list("[a] b");
    ListID spare = list("x y |");
    list_delete(&letters, 1, &spare);
    EXPECT_EQ(text(spare), "[a]");
}

TEST_F(LinkedList, FreeMovesTheWholeListBeforeTheFreeListsCursor) {
    ListID letters = list("a [b] c");
    ListID spare = list("x [y]");
    list_free(&letters, &spare);
    EXPECT_EQ(text(letters), "");
    EXPECT_EQ(text(spare), "x [a] b c y");
}

TEST_F(LinkedList, FreeIntoAnEmptyFreeListMovesAll) {
    ListID letters = list("a b |");
    ListID spare = list("");
    list_free(&letters, &spare);
    EXPECT_EQ(text(spare), "[a] b");
}

TEST_F(LinkedList, FreeIntoAFreeListWithANullCursorLosesWhatItHeld) {
    ListID letters = list("[a] b");
    ListID spare = list("x |");
    list_free(&letters, &spare);
    EXPECT_EQ(text(spare), "[a] b");
}

TEST_F(LinkedList, FreeOfAnEmptyListDoesNothing) {
    ListID letters = list("");
    ListID spare = list("x |");
    list_free(&letters, &spare);
    EXPECT_EQ(text(spare), "x |");
}

TEST_F(LinkedList, FreeIntoItselfChangesNothing) {
    ListID letters = list("a [b]");
    list_free(&letters, &letters);
    EXPECT_EQ(text(letters), "a [b]");
}

TEST_F(LinkedList, FreedNodesServeTheNextAllocation) {
    ListID letters;
    ListID spare = list("");
    blocks_.allocate(100, 8, &letters, &spare);
    const auto nodes = nodes_of(letters);
    for (int round = 0; round < 3; ++round) {
        list_free(&letters, &spare);
        EXPECT_EQ(blocks_.allocate(100, 8, &letters, &spare), 0U);
        EXPECT_EQ(nodes_of(letters), nodes);
    }
    EXPECT_EQ(blocks_.count(), 1U);
}
