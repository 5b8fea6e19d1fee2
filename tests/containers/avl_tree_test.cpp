#include <orvix/gsl/avl_tree.h>

#include "containers/avl_tree_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// Items are letters; what equals what is decided by their lower case, so that an item can be told from its equals.
char letter(const void* item) { return *static_cast<const char*>(item); }

std::string name(const void* item) { return {letter(item)}; }

int lower(const void* item) { return letter(item) | 0x20; }

std::vector<std::pair<char, char>> compared;

int compare_letters(const void* a, const void* b) {
    compared.emplace_back(letter(a), letter(b));
    return lower(a) - lower(b);
}

std::string released;

void release_letter(void* item) { released += letter(item); }

class AvlTree : public testing::Test {
protected:
    AvlTree() {
        avltree_init(&root_);
        compared.clear();
        released.clear();
    }
    ~AvlTree() override { avltree_free(&root_, nullptr); }
    AvlTree(const AvlTree&) = delete;
    AvlTree& operator=(const AvlTree&) = delete;

    void insert(const std::string& items, void (*release)(void*) = release_letter) {
        for (const char c : items) avltree_insert(&root_, compare_letters, item(c), release);
    }
    bool remove(char key, void (*release)(void*) = release_letter) {
        return avltree_delete(&root_, compare_letters, &key, release) != 0;
    }
    void* search(char key) { return avltree_search(&root_, compare_letters, &key); }

    // Nodes from left to right with their signs of balance; see drawing().
    std::string shape() const { return orvix::test::drawing(root_, name); }

    static void* item(char c) { return &letters_[static_cast<unsigned char>(c)]; }

    tree_s* root_ = reinterpret_cast<tree_s*>(letters_);  // no tree before avltree_init

private:
    static inline char letters_[128];
    static inline const bool filled_ = [] {
        for (int i = 0; i < 128; ++i) letters_[i] = static_cast<char>(i);
        return true;
    }();
};

TEST_F(AvlTree, InitMakesItEmpty) { EXPECT_EQ(root_, nullptr); }

TEST_F(AvlTree, LoneItemIsTheRoot) {
    insert("m");
    ASSERT_NE(root_, nullptr);
    EXPECT_EQ(root_->item, item('m'));
    EXPECT_EQ(shape(), "(. m .)");
}

TEST_F(AvlTree, InsertingAnEqualItemLeavesOneNodeAndReleasesTheFirst) {
    insert("mM");
    EXPECT_EQ(shape(), "(. M .)");
    EXPECT_EQ(released, "m");
}

TEST_F(AvlTree, ReplacingWithoutReleaseLeavesTheOldItemAlone) {
    insert("mM", nullptr);
    EXPECT_EQ(root_->item, item('M'));
    EXPECT_EQ(*static_cast<char*>(item('m')), 'm');
}

TEST_F(AvlTree, ReplacingBelowTheRootChangesNoBalance) {
    insert("mgtdD");
    EXPECT_EQ(shape(), "(((. D .) g- .) m- (. t .))");
    EXPECT_EQ(released, "d");
}

TEST_F(AvlTree, InsertComparesTheNewItemFirst) {
    insert("m");
    compared.clear();
    insert("g");
    EXPECT_THAT(compared, ElementsAre(Pair('g', 'm')));
}

TEST_F(AvlTree, InsertComparesOnceForEachNodeFromTheRoot) {
    insert("mgtd");
    compared.clear();
    insert("j");
    EXPECT_THAT(compared, ElementsAre(Pair('j', 'm'), Pair('j', 'g')));
}

TEST_F(AvlTree, SearchComparesTheKeyFirst) {
    insert("mgt");
    compared.clear();
    EXPECT_EQ(search('T'), item('t'));
    EXPECT_THAT(compared, ElementsAre(Pair('T', 'm'), Pair('T', 't')));
}

TEST_F(AvlTree, SearchStopsAtTheFirstEqualItem) {
    insert("mgt");
    compared.clear();
    EXPECT_EQ(search('m'), item('m'));
    EXPECT_THAT(compared, ElementsAre(Pair('m', 'm')));
}

TEST_F(AvlTree, SearchOfAnAbsentKeyGivesNull) {
    insert("mgt");
    EXPECT_EQ(search('a'), nullptr);
    EXPECT_EQ(search('z'), nullptr);
}

TEST_F(AvlTree, SearchOfAnEmptyTreeComparesNothing) {
    EXPECT_EQ(search('a'), nullptr);
    EXPECT_THAT(compared, IsEmpty());
}

TEST_F(AvlTree, DeleteComparesTheItemFirst) {
    insert("mgt");
    compared.clear();
    EXPECT_TRUE(remove('T'));
    EXPECT_THAT(compared, ElementsAre(Pair('m', 'T'), Pair('t', 'T')));
}

TEST_F(AvlTree, DeletionWithTwoChildrenComparesNoFurther) {
    insert("mgtdj");
    compared.clear();
    EXPECT_TRUE(remove('m'));
    EXPECT_THAT(compared, ElementsAre(Pair('m', 'm')));
}

TEST_F(AvlTree, AnswersOfTheLargestSizeHaveASign) {
    static constexpr int least = -2147483647 - 1;
    const auto compare = [](const void* a, const void* b) {
        return lower(a) < lower(b) ? least : lower(a) > lower(b) ? 2147483647 : 0;
    };
    for (const char c : {'m', 'g', 't'}) avltree_insert(&root_, compare, item(c), nullptr);
    EXPECT_EQ(shape(), "((. g .) m (. t .))");
    EXPECT_NE(avltree_delete(&root_, compare, item('t'), nullptr), 0);
    EXPECT_NE(avltree_delete(&root_, compare, item('g'), nullptr), 0);
    EXPECT_EQ(shape(), "(. m .)");
}

TEST_F(AvlTree, DeletingFromAnEmptyTreeReturnsZeroAndComparesNothing) {
    EXPECT_EQ(avltree_delete(&root_, compare_letters, item('a'), release_letter), 0);
    EXPECT_THAT(compared, IsEmpty());
    EXPECT_EQ(released, "");
}

TEST_F(AvlTree, DeletingTheLastNodeLeavesANullRoot) {
    insert("m");
    EXPECT_TRUE(remove('m'));
    EXPECT_EQ(root_, nullptr);
    EXPECT_EQ(released, "m");
}

TEST_F(AvlTree, DeletingAnAbsentKeyLeavesTheTreeAndItsBalances) {
    insert("mgtd");
    EXPECT_FALSE(remove('e'));
    EXPECT_EQ(shape(), "(((. d .) g- .) m- (. t .))");
    EXPECT_EQ(released, "");
}

TEST_F(AvlTree, DeletionReleasesTheStoredItemAndNotTheKey) {
    insert("mg");
    EXPECT_TRUE(remove('G'));
    EXPECT_EQ(released, "g");
}

TEST_F(AvlTree, WithoutReleaseDeletionAndFreeLeaveItemsAlone) {
    insert("mgt", nullptr);
    EXPECT_TRUE(remove('m', nullptr));
    avltree_free(&root_, nullptr);
    EXPECT_EQ(*static_cast<char*>(item('m')), 'm');
    EXPECT_EQ(*static_cast<char*>(item('g')), 'g');
    EXPECT_EQ(released, "");
}

TEST_F(AvlTree, ItemBeforeTakesThePlaceOfOneWithTwoChildren) {
    insert("mgtd");
    EXPECT_TRUE(remove('m'));
    EXPECT_EQ(shape(), "((. d .) g (. t .))");
    EXPECT_EQ(released, "m");
}

TEST_F(AvlTree, ItemBeforeIsFoundBelowTheLeftChild) {
    insert("mgtdjpvk");
    EXPECT_TRUE(remove('m'));
    EXPECT_EQ(shape(), "(((. d .) g (. j .)) k ((. p .) t (. v .)))");
    EXPECT_EQ(released, "m");
}

TEST_F(AvlTree, ItemBeforeMovesAndItsNodeGoes) {
    insert("mgt");
    const tree_s* const node = root_;
    EXPECT_TRUE(remove('m'));
    EXPECT_EQ(root_, node);
    EXPECT_EQ(root_->item, item('g'));
}

TEST_F(AvlTree, LoneChildTakesThePlaceOfItsParent) {
    insert("mgtdv");
    EXPECT_TRUE(remove('g'));
    EXPECT_TRUE(remove('t'));
    EXPECT_EQ(shape(), "((. d .) m (. v .))");
}

TEST_F(AvlTree, GrowthOnTheOutsideRotatesOnce) {
    insert("cba");
    EXPECT_EQ(shape(), "((. a .) b (. c .))");
    insert("de");
    EXPECT_EQ(shape(), "((. a .) b+ ((. c .) d (. e .)))");
}

TEST_F(AvlTree, GrowthOnTheInsideRotatesTwice) {
    insert("cab");
    EXPECT_EQ(shape(), "((. a .) b (. c .))");
    insert("ed");
    EXPECT_EQ(shape(), "((. a .) b+ ((. c .) d (. e .)))");
}

TEST_F(AvlTree, MiddleOfADoubleRotationDividesItsChildrenByItsLean) {
    const std::string with_c = "(((. a .) b (. c .)) d (. f+ (. g .)))";
    const std::string with_e = "(((. a .) b- .) d ((. e .) f (. g .)))";
    for (const auto& [items, expected] : {std::pair("fbgadc", with_c), std::pair("fbgade", with_e),
                                          std::pair("bafgdc", with_c), std::pair("bafgde", with_e)}) {
        SCOPED_TRACE(items);
        insert(items);
        EXPECT_EQ(shape(), expected);
        avltree_free(&root_, nullptr);
    }
}

TEST_F(AvlTree, ShrinkingBesideALevelNodeRotatesOnceAndKeepsTheHeight) {
    insert("bacde");
    ASSERT_EQ(shape(), "((. a .) b+ ((. c .) d (. e .)))");
    EXPECT_TRUE(remove('a'));
    EXPECT_EQ(shape(), "((. b+ (. c .)) d- (. e .))");
}

TEST_F(AvlTree, ShrinkingBesideANodeThatLeansOutwardsRotatesOnceAndLosesALevel) {
    insert("bacd");
    EXPECT_TRUE(remove('a'));
    EXPECT_EQ(shape(), "((. b .) c (. d .))");
}

TEST_F(AvlTree, ShrinkingBesideANodeThatLeansInwardsRotatesTwice) {
    insert("badc");
    EXPECT_TRUE(remove('a'));
    EXPECT_EQ(shape(), "((. b .) c (. d .))");
}

TEST_F(AvlTree, ShrinkingOnTheRightIsTheMirrorImage) {
    insert("dbeac");
    EXPECT_TRUE(remove('e'));
    EXPECT_EQ(shape(), "((. a .) b+ ((. c .) d- .))");
    EXPECT_TRUE(remove('a'));
    EXPECT_EQ(shape(), "((. b .) c (. d .))");
}

TEST_F(AvlTree, LossOfALevelGoesOnUpToTheRoot) {
    insert("hcmaekofilnpq");  // as thin on the left as may be
    ASSERT_EQ(shape(), "(((. a .) c+ (. e+ (. f .))) h+ (((. i .) k (. l .)) m+ ((. n .) o+ (. p+ (. q .)))))");
    EXPECT_TRUE(remove('a'));
    EXPECT_EQ(shape(), "((((. c .) e (. f .)) h ((. i .) k (. l .))) m ((. n .) o+ (. p+ (. q .))))");
}

TEST_F(AvlTree, ForeachVisitsInOrderAndHandsTheUserPointerOn) {
    insert("mgtdjpv");
    std::string seen;
    const auto visit = [](void* item, void* user) {
        *static_cast<std::string*>(user) += letter(item);
        return true;
    };
    EXPECT_TRUE(avltree_foreach(&root_, visit, &seen));
    EXPECT_EQ(seen, "dgjmptv");
}

TEST_F(AvlTree, ForeachEndsWithTheFirstFalseWhereverItIs) {
    insert("mgtdjpv");
    for (const char last : std::string("dgjmptv")) {
        SCOPED_TRACE(last);
        std::pair<std::string, char> seen{"", last};
        const auto visit = [](void* item, void* user) {
            auto* const state = static_cast<std::pair<std::string, char>*>(user);
            state->first += letter(item);
            return letter(item) != state->second;
        };
        EXPECT_FALSE(avltree_foreach(&root_, visit, &seen));
        EXPECT_EQ(seen.first, std::string("dgjmptv").substr(0, std::string("dgjmptv").find(last) + 1));
    }
}

TEST_F(AvlTree, ForeachOverAnEmptyTreeGivesTrue) {
    EXPECT_TRUE(avltree_foreach(
        &root_, [](void*, void*) { return false; }, nullptr));
}

TEST_F(AvlTree, FreeReleasesFromBelow) {
    insert("mgtdjpv");
    avltree_free(&root_, release_letter);
    EXPECT_EQ(released, "djgpvtm");
    EXPECT_EQ(root_, nullptr);
}

TEST_F(AvlTree, FreedTreeIsUsableAgain) {
    insert("mgt");
    avltree_free(&root_, nullptr);
    insert("ba");
    EXPECT_EQ(shape(), "((. a .) b- .)");
}

TEST_F(AvlTree, FreeOfAnEmptyTreeReleasesNothing) {
    avltree_free(&root_, release_letter);
    EXPECT_EQ(root_, nullptr);
    EXPECT_EQ(released, "");
}

TEST_F(AvlTree, DescendingInsertionsAreAsFlatAsAscendingOnes) {
    insert("ABCDEFGHIJKLMNO");
    EXPECT_EQ(shape(), "((((. A .) B (. C .)) D ((. E .) F (. G .))) H (((. I .) J (. K .)) L ((. M .) N (. O .))))");
    avltree_free(&root_, nullptr);
    insert("ONMLKJIHGFEDCBA");
    EXPECT_EQ(shape(), "((((. A .) B (. C .)) D ((. E .) F (. G .))) H (((. I .) J (. K .)) L ((. M .) N (. O .))))");
}

// A callback finds the tree whole, without the item that it was given, and may change it.
tree_s** tree_of_callback;
std::string shapes_in_callback;

void note_shape(void* item) {
    release_letter(item);
    shapes_in_callback += orvix::test::drawing(*tree_of_callback, name);
}

TEST_F(AvlTree, ReleaseFindsTheTreeWholeAfterDeletion) {
    tree_of_callback = &root_;
    shapes_in_callback.clear();
    insert("bacd");
    EXPECT_TRUE(remove('a', note_shape));
    EXPECT_EQ(shapes_in_callback, "((. b .) c (. d .))");
}

TEST_F(AvlTree, ReleaseFindsTheNewItemAfterReplacement) {
    tree_of_callback = &root_;
    shapes_in_callback.clear();
    insert("m");
    insert("M", note_shape);
    EXPECT_EQ(shapes_in_callback, "(. M .)");
}

TEST_F(AvlTree, ReleaseFindsAnEmptyTreeDuringFree) {
    tree_of_callback = &root_;
    shapes_in_callback.clear();
    insert("ba");
    avltree_free(&root_, note_shape);
    EXPECT_EQ(released, "ab");
    EXPECT_EQ(shapes_in_callback, "..");
}

TEST_F(AvlTree, ReleaseMayDeleteFromTheTree) {
    tree_of_callback = &root_;
    insert("mgtdjpv");
    EXPECT_TRUE(remove('g', [](void* item) {
        release_letter(item);
        avltree_delete(tree_of_callback, compare_letters, "t", release_letter);
    }));
    EXPECT_EQ(released, "gt");
    EXPECT_EQ(shape(), "((. d+ (. j .)) m (. p+ (. v .)))");
}

}  // namespace
