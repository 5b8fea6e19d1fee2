#include <orvix/gsl/avl_tree.h>
#include <orvix/gsl/string_database.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

static_assert(std::is_standard_layout_v<HXstringDB> && std::is_standard_layout_v<HXstringDBItem>);
static_assert(offsetof(HXstringDB, root) == 8 && offsetof(HXstringDB, find) == 16);
static_assert(offsetof(HXstringDB, release_value) == 16 + 8 * sizeof(void (*)()));
static_assert(offsetof(HXstringDBItem, key) == 0 && offsetof(HXstringDBItem, value) == 8);

// Values are texts; a release notes them.
std::vector<std::string> released;

void* value(const char* text) { return const_cast<char*>(text); }
void release(void* value) { released.emplace_back(static_cast<const char*>(value)); }
bool is(void* value, const char* text) { return static_cast<const char*>(value) == std::string(text); }
void release_marked(void* value) { released.push_back("marked " + std::string(static_cast<const char*>(value))); }

class StringDatabase : public testing::Test {
protected:
    StringDatabase() { released.clear(); }
    ~StringDatabase() override {
        for (HXstringDB* db : open_) db->destroy(db);
    }
    StringDatabase(const StringDatabase&) = delete;
    StringDatabase& operator=(const StringDatabase&) = delete;

    // Destroyed with the test.
    HXstringDB* open(void (*release_value)(void*) = nullptr, bool ignore_case = false) {
        open_.push_back(HXstringDB_new(release_value, ignore_case));
        return open_.back();
    }

private:
    std::vector<HXstringDB*> open_;
};

std::string found(HXstringDB* db, const char* key) {
    void** const value = db->find(db, key);
    if (value == nullptr) return "absent";
    return *value == nullptr ? "null" : static_cast<const char*>(*value);
}

std::vector<std::string> keys(HXstringDB* db) {
    std::vector<std::string> all;
    const auto visit = [](HXstringDBItem* item, void* user) {
        static_cast<std::vector<std::string>*>(user)->emplace_back(item->key);
        return true;
    };
    EXPECT_TRUE(db->foreach (db, visit, &all));
    return all;
}

TEST_F(StringDatabase, NewOneHasHeightZeroAndIsEmpty) {
    HXstringDB* const db = open();
    EXPECT_EQ(db->height(db), 0);
    EXPECT_TRUE(db->is_empty(db));
    EXPECT_EQ(db->root, nullptr);
}

TEST_F(StringDatabase, NewOneKeepsWhatItWasGiven) {
    HXstringDB* const db = open(release, true);
    EXPECT_TRUE(db->ignore_case);
    EXPECT_EQ(db->release_value, release);
    EXPECT_FALSE(open()->ignore_case);
}

TEST_F(StringDatabase, FindsWhatWasAdded) {
    HXstringDB* const db = open();
    EXPECT_TRUE(db->add(db, "width", value("12")));
    EXPECT_TRUE(db->add(db, "height", value("7")));
    EXPECT_EQ(found(db, "width"), "12");
    EXPECT_EQ(found(db, "height"), "7");
    EXPECT_EQ(found(db, "depth"), "absent");
}

TEST_F(StringDatabase, KeyIsCopied) {
    HXstringDB* const db = open();
    char key[] = "width";
    db->add(db, key, value("12"));
    key[0] = 'W';
    EXPECT_EQ(found(db, "width"), "12");
}

TEST_F(StringDatabase, EmptyStringIsAKey) {
    HXstringDB* const db = open();
    EXPECT_TRUE(db->add(db, "", value("12")));
    EXPECT_EQ(found(db, ""), "12");
}

TEST_F(StringDatabase, NullKeyIsNeverFound) {
    HXstringDB* const db = open();
    db->add(db, "", value("12"));
    EXPECT_EQ(db->find(db, nullptr), nullptr);
}

TEST_F(StringDatabase, NullKeyIsNotAdded) {
    HXstringDB* const db = open();
    EXPECT_FALSE(db->add(db, nullptr, value("12")));
    EXPECT_TRUE(db->is_empty(db));
}

TEST_F(StringDatabase, RemoveOfANullKeyReturnsFalse) {
    HXstringDB* const db = open();
    db->add(db, "", value("12"));
    EXPECT_FALSE(db->remove(db, nullptr));
    EXPECT_FALSE(db->is_empty(db));
}

TEST_F(StringDatabase, RemoveOfAnAbsentKeyReturnsTrue) {
    HXstringDB* const db = open();
    EXPECT_TRUE(db->remove(db, "width"));
    db->add(db, "height", value("7"));
    EXPECT_TRUE(db->remove(db, "width"));
    EXPECT_EQ(found(db, "height"), "7");
}

TEST_F(StringDatabase, RemovedKeyIsGone) {
    HXstringDB* const db = open();
    db->add(db, "width", value("12"));
    EXPECT_TRUE(db->remove(db, "width"));
    EXPECT_EQ(found(db, "width"), "absent");
    EXPECT_TRUE(db->is_empty(db));
}

TEST_F(StringDatabase, FindGivesTheAddressOfTheStoredValue) {
    HXstringDB* const db = open();
    db->add(db, "width", value("12"));
    *db->find(db, "width") = value("13");
    EXPECT_EQ(found(db, "width"), "13");
}

TEST_F(StringDatabase, AddressOfAValueSurvivesOtherKeys) {
    HXstringDB* const db = open();
    db->add(db, "m", value("12"));
    void** const address = db->find(db, "m");
    for (const char* key : {"a", "b", "c", "x", "y", "z"}) db->add(db, key, nullptr);
    for (const char* key : {"b", "y", "a", "x"}) db->remove(db, key);
    EXPECT_EQ(db->find(db, "m"), address);
}

TEST_F(StringDatabase, NullValueIsStored) {
    HXstringDB* const db = open();
    EXPECT_TRUE(db->add(db, "width", nullptr));
    EXPECT_EQ(found(db, "width"), "null");
}

TEST_F(StringDatabase, AddingAKeyAgainReplacesItsValue) {
    HXstringDB* const db = open();
    db->add(db, "width", value("12"));
    EXPECT_TRUE(db->add(db, "width", value("13")));
    EXPECT_EQ(found(db, "width"), "13");
    EXPECT_THAT(keys(db), ElementsAre("width"));
}

TEST_F(StringDatabase, IgnoringCaseSpellingsAreOneKeyThatTakesTheLast) {
    HXstringDB* const db = open(nullptr, true);
    db->add(db, "Abc", value("12"));
    EXPECT_TRUE(db->add(db, "aBC", value("13")));
    EXPECT_THAT(keys(db), ElementsAre("aBC"));
    EXPECT_EQ(found(db, "ABC"), "13");
    EXPECT_TRUE(db->remove(db, "abc"));
    EXPECT_TRUE(db->is_empty(db));
}

TEST_F(StringDatabase, MindingCaseSpellingsAreTwoKeys) {
    HXstringDB* const db = open();
    db->add(db, "Abc", value("12"));
    db->add(db, "aBC", value("13"));
    EXPECT_THAT(keys(db), ElementsAre("Abc", "aBC"));
}

TEST_F(StringDatabase, BytesCompareAsUnsigned) {
    HXstringDB* const db = open();
    for (const char* key : {"\xff", "a", "\x80", "\x7f", "ab", ""}) db->add(db, key, nullptr);
    EXPECT_THAT(keys(db), ElementsAre("", "a", "ab", "\x7f", "\x80", "\xff"));
}

TEST_F(StringDatabase, IgnoringCaseLettersCompareAsLowerCase) {
    HXstringDB* const db = open(nullptr, true);
    for (const char* key : {"B", "_", "a", "Z", "@", "{", "\xc4", "\xe4"}) db->add(db, key, nullptr);
    EXPECT_THAT(keys(db), ElementsAre("@", "_", "a", "B", "Z", "{", "\xc4", "\xe4"));
}

TEST_F(StringDatabase, KeyMayBeTheDatabasesOwnCopy) {
    HXstringDB* const db = open(release);
    db->add(db, "width", value("12"));
    const auto own_copy = [](HXstringDBItem* item, void* key) {
        *static_cast<const char**>(key) = item->key;
        return true;
    };
    const char* key = nullptr;
    db->foreach (db, own_copy, &key);
    EXPECT_TRUE(db->add(db, key, value("13")));
    EXPECT_EQ(found(db, "width"), "13");
    db->foreach (db, own_copy, &key);
    EXPECT_TRUE(db->remove(db, key));
    EXPECT_THAT(released, ElementsAre("13"));
}

TEST_F(StringDatabase, RemoveReleasesTheValue) {
    HXstringDB* const db = open(release);
    db->add(db, "width", value("12"));
    db->add(db, "height", value("7"));
    db->remove(db, "width");
    EXPECT_THAT(released, ElementsAre("12"));
}

TEST_F(StringDatabase, ReleaseDoesNotSeeNullValues) {
    HXstringDB* const db = HXstringDB_new([](void*) { released.emplace_back("called"); }, false);
    db->add(db, "width", nullptr);
    db->add(db, "height", nullptr);
    db->remove(db, "width");
    db->destroy(db);
    EXPECT_THAT(released, IsEmpty());
}

TEST_F(StringDatabase, DestroyReleasesFromBelow) {
    HXstringDB* const db = HXstringDB_new(release, false);
    for (const char* key : {"m", "g", "t", "d", "j", "p", "v"}) db->add(db, key, value(key));
    db->destroy(db);
    EXPECT_THAT(released, ElementsAre("d", "j", "g", "p", "v", "t", "m"));
}

TEST_F(StringDatabase, WithoutReleaseValuesAreLeftAlone) {
    HXstringDB* const db = HXstringDB_new(nullptr, false);
    db->add(db, "width", value("12"));
    db->add(db, "height", value("7"));
    db->remove(db, "width");
    db->destroy(db);
    EXPECT_THAT(released, IsEmpty());
}

TEST_F(StringDatabase, DestroyAcceptsNull) {
    HXstringDB* const db = open();
    db->destroy(nullptr);
    EXPECT_TRUE(db->is_empty(db));
}

TEST_F(StringDatabase, ForeachStopsAtTheFirstFalse) {
    HXstringDB* const db = open();
    for (const char* key : {"a", "b", "c"}) db->add(db, key, nullptr);
    std::vector<std::string> seen;
    const auto visit = [](HXstringDBItem* item, void* user) {
        static_cast<std::vector<std::string>*>(user)->emplace_back(item->key);
        return item->key != std::string("b");
    };
    EXPECT_FALSE(db->foreach (db, visit, &seen));
    EXPECT_THAT(seen, ElementsAre("a", "b"));
}

TEST_F(StringDatabase, ForeachGivesKeyAndValueAndMayChangeTheValue) {
    HXstringDB* const db = open();
    db->add(db, "width", value("12"));
    const auto visit = [](HXstringDBItem* item, void* user) {
        EXPECT_STREQ(item->key, "width");
        EXPECT_STREQ(static_cast<const char*>(item->value), "12");
        item->value = user;
        return true;
    };
    EXPECT_TRUE(db->foreach (db, visit, value("13")));
    EXPECT_EQ(found(db, "width"), "13");
}

TEST_F(StringDatabase, ForeachOverNothingGivesTrue) {
    HXstringDB* const db = open();
    EXPECT_TRUE(db->foreach (
        db, [](HXstringDBItem*, void*) { return false; }, nullptr));
}

TEST_F(StringDatabase, HeightCountsLevels) {
    HXstringDB* const db = open();
    const std::vector<std::pair<const char*, int>> steps = {{"m", 1}, {"t", 2}, {"g", 2}, {"p", 3},
                                                            {"d", 3}, {"x", 3}, {"j", 3}, {"n", 4}};
    for (const auto& [key, height] : steps) {
        SCOPED_TRACE(key);
        db->add(db, key, nullptr);
        EXPECT_EQ(db->height(db), height);
    }
}

TEST_F(StringDatabase, HeightFollowsTheLongerSide) {
    HXstringDB* const left = open();
    for (const char* key : {"m", "g", "t", "d"}) left->add(left, key, nullptr);
    EXPECT_EQ(left->height(left), 3);
    HXstringDB* const right = open();
    for (const char* key : {"m", "g", "t", "x"}) right->add(right, key, nullptr);
    EXPECT_EQ(right->height(right), 3);
}

TEST_F(StringDatabase, RootWithoutItemCountsAsEmpty) {
    HXstringDB* const db = open();
    tree_s bare{nullptr, nullptr, 0, nullptr};
    db->root = &bare;
    EXPECT_TRUE(db->is_empty(db));
    db->root = nullptr;
}

TEST_F(StringDatabase, PrintGivesKeysInOrderWithLevels) {
    HXstringDB* const db = open();
    for (const char* key : {"m", "g", "t", "p"}) db->add(db, key, value("12"));
    *db->find(db, "t") = nullptr;
    std::vector<std::string> lines;
    db->print(db, &lines, [](void* context, const char* key, int level, void* value) {
        const std::string text = value == nullptr ? "null" : static_cast<const char*>(value);
        static_cast<std::vector<std::string>*>(context)->push_back(std::string(key) + std::to_string(level) + text);
    });
    EXPECT_THAT(lines, ElementsAre("g212", "m112", "p312", "t2null"));
}

TEST_F(StringDatabase, PrintOfNothingPrintsNothing) {
    HXstringDB* const db = open();
    db->print(db, nullptr, [](void*, const char*, int, void*) { FAIL(); });
}

// Which callback sees the value that adding replaces.

TEST_F(StringDatabase, ValueReplacedOutsideOfOtherCallsIsReleasedToNobody) {
    HXstringDB* const db = open(release);
    db->add(db, "width", value("12"));
    db->add(db, "width", value("13"));
    EXPECT_THAT(released, IsEmpty());
}

TEST_F(StringDatabase, NothingStaysInForceAfterRemoveAndDestroy) {
    HXstringDB* const gone = HXstringDB_new(release_marked, false);
    gone->add(gone, "a", value("1"));
    gone->add(gone, "b", value("2"));
    gone->remove(gone, "a");
    gone->destroy(gone);
    released.clear();
    HXstringDB* const db = open(release);
    db->add(db, "width", value("12"));
    db->add(db, "width", value("13"));
    EXPECT_THAT(released, IsEmpty());
}

HXstringDB* other;

TEST_F(StringDatabase, ValueReplacedDuringARemoveGoesToTheRemovingCallback) {
    other = open(release_marked);
    other->add(other, "width", value("12"));
    HXstringDB* const db = open([](void* gone) {
        release(gone);
        if (is(gone, "1")) other->add(other, "width", value("13"));
    });
    db->add(db, "a", value("1"));
    db->remove(db, "a");
    EXPECT_THAT(released, ElementsAre("1", "12"));
    EXPECT_EQ(found(other, "width"), "13");
}

TEST_F(StringDatabase, ValueReplacedDuringADestroyGoesToTheDestroyingCallback) {
    other = open(release_marked);
    other->add(other, "width", value("12"));
    HXstringDB* const db = HXstringDB_new(
        [](void* gone) {
            release(gone);
            if (is(gone, "1")) other->add(other, "width", value("13"));
        },
        false);
    db->add(db, "b", value("2"));
    db->add(db, "a", value("1"));
    db->destroy(db);
    EXPECT_THAT(released, ElementsAre("1", "12", "2"));
}

TEST_F(StringDatabase, ValueReplacedByAVisitorGoesToNobody) {
    other = open(release_marked);
    other->add(other, "width", value("12"));
    HXstringDB* const db = open(release);
    db->add(db, "a", value("1"));
    db->foreach (
        db, [](HXstringDBItem*, void*) { return other->add(other, "width", value("13")); }, nullptr);
    EXPECT_THAT(released, IsEmpty());
}

TEST_F(StringDatabase, InnermostRemoveIsTheOneInForceAndTheOuterFollowsIt) {
    static HXstringDB* third;
    third = open();
    third->add(third, "x", value("old"));
    other = open([](void* gone) {
        release_marked(gone);
        if (is(gone, "2")) third->add(third, "x", value("new"));
    });
    other->add(other, "b", value("2"));
    HXstringDB* const db = open([](void* gone) {
        release(gone);
        if (!is(gone, "1")) return;
        other->remove(other, "b");
        third->add(third, "x", value("newest"));
    });
    db->add(db, "a", value("1"));
    db->remove(db, "a");
    EXPECT_THAT(released, ElementsAre("1", "marked 2", "marked old", "new"));
}

TEST_F(StringDatabase, RemoveWithoutACallbackPutsNoneInForce) {
    static HXstringDB* silent;
    silent = open();
    silent->add(silent, "b", value("2"));
    HXstringDB* const db = open([](void* gone) {
        release(gone);
        silent->remove(silent, "b");
    });
    db->add(db, "a", value("1"));
    db->remove(db, "a");
    EXPECT_THAT(released, ElementsAre("1"));
}

// A callback may come back to the database that calls it.

TEST_F(StringDatabase, CallbackOfRemoveMayUseTheSameDatabase) {
    other = open([](void* gone) {
        release(gone);
        if (!is(gone, "m")) return;
        EXPECT_EQ(found(other, "m"), "absent");
        EXPECT_EQ(found(other, "g"), "g");
        other->remove(other, "t");
        other->add(other, "z", value("z"));
        other->add(other, "d", value("new d"));
    });
    for (const char* key : {"m", "g", "t", "d", "j"}) other->add(other, key, value(key));
    other->remove(other, "m");
    EXPECT_THAT(released, ElementsAre("m", "t", "d"));
    EXPECT_THAT(keys(other), ElementsAre("d", "g", "j", "z"));
}

TEST_F(StringDatabase, CallbackOfRemoveMayDestroyTheSameDatabase) {
    other = HXstringDB_new(
        [](void* gone) {
            release(gone);
            if (is(gone, "m")) other->destroy(other);
        },
        false);
    for (const char* key : {"m", "g", "t"}) other->add(other, key, value(key));
    EXPECT_TRUE(other->remove(other, "m"));
    EXPECT_THAT(released, ElementsAre("m", "t", "g"));
}

TEST_F(StringDatabase, CallbackOfDestroyFindsTheDatabaseEmptyAndClosed) {
    other = HXstringDB_new(
        [](void* gone) {
            release(gone);
            EXPECT_TRUE(other->is_empty(other));
            EXPECT_EQ(found(other, "m"), "absent");
            EXPECT_TRUE(other->remove(other, "m"));
            EXPECT_FALSE(other->add(other, "x", value("x")));
            other->destroy(other);
        },
        false);
    for (const char* key : {"m", "g", "t"}) other->add(other, key, value(key));
    other->destroy(other);
    EXPECT_THAT(released, ElementsAre("g", "t", "m"));
}

TEST_F(StringDatabase, DatabasesInsideADatabaseAreDestroyedWithIt) {
    HXstringDB* const inner = HXstringDB_new(release, true);
    inner->add(inner, "Red", value("red"));
    inner->add(inner, "blue", value("blue"));
    HXstringDB* const outer = HXstringDB_new(
        [](void* value) {
            auto* const db = static_cast<HXstringDB*>(value);
            db->destroy(db);
        },
        false);
    outer->add(outer, "colours", inner);
    outer->destroy(outer);
    EXPECT_THAT(released, ElementsAre("blue", "red"));
}

}  // namespace
