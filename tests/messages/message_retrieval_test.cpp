#include "messages/message_site.h"
#include "support/denial.h"

#include <gtest/gtest.h>

#include <climits>
#include <filesystem>

namespace {

using namespace std::string_literals;
using orvix::test::Messages;
using orvix::test::MessageSite;

class GmsgRetrieveMessage : public testing::Test {
protected:
    // Adds a set in a file of its own.
    void add_set(const std::string& set, const std::string& file) {
        sets_ += set + "=" + site_.name(file) + "\n";
        site_.write("sets", sets_);
    }

    void SetUp() override {
        site_.write_english("first\nsecond\n\nlast");
        sets_ = "GENERAL=" + site_.name("general") + "\n";
    }

    MessageSite site_;
    std::string sets_;
};

TEST_F(GmsgRetrieveMessage, LineOfTheFileIsTheMessage) {
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    EXPECT_EQ(messages.text("GENERAL", 2), "second");
}

TEST_F(GmsgRetrieveMessage, LastLineIsReachableAndTheNextIsNot) {
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 4), "last");
    EXPECT_EQ(messages.text("GENERAL", 5), "(code 20)");
    EXPECT_EQ(messages.text("GENERAL", INT_MAX), "(code 20)");
}

TEST_F(GmsgRetrieveMessage, EmptyLineIsAnEmptyText) {
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 3), "");
}

TEST_F(GmsgRetrieveMessage, LineBelowOneIsToldBeforeTheSetIsLookedAt) {
    const Messages messages;
    EXPECT_EQ(messages.text(nullptr, 0), "(code 20)");
    EXPECT_EQ(messages.text("GENERAL", -1), "(code 20)");
    EXPECT_EQ(messages.text("GENERAL", INT_MIN), "(code 20)");
}

TEST_F(GmsgRetrieveMessage, NullSetIsTold) {
    const Messages messages;
    EXPECT_EQ(messages.text(nullptr, 1), "(code 18)");
}

TEST_F(GmsgRetrieveMessage, NullHandleIsToldBeforeAllElse) {
    char out[1024] = "untouched";
    EXPECT_FALSE(gmsg_retrieve_message(nullptr, nullptr, 0, out));
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_NOT_INITIALIZED);
    EXPECT_STREQ(out, "untouched");
}

TEST_F(GmsgRetrieveMessage, NullBufferIsTold) {
    const Messages messages;
    EXPECT_FALSE(gmsg_retrieve_message(messages.handle(), "GENERAL", 1, nullptr));
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_RETRIEVE_FAILED);
}

TEST_F(GmsgRetrieveMessage, SuccessClearsAnOldCode) {
    const Messages messages;
    GuiErrno = GUI_ERR_FILE_DELETE;
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    EXPECT_EQ(GuiErrno, GUI_ERR_NONE);
}

TEST_F(GmsgRetrieveMessage, ByteFourteenBecomesALineFeed) {
    site_.write("general.eng", "one\x0etwo\x0e\x0ethree\x0e\n");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "one\ntwo\n\nthree\n");
}

TEST_F(GmsgRetrieveMessage, TabsAreBlanks) {
    site_.write("general.eng", "a\tb\n");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "a b");
}

TEST_F(GmsgRetrieveMessage, LongLineKeeps1023Bytes) {
    site_.write("general.eng", std::string(5000, 'x') + "\nnext\n");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), std::string(1023, 'x'));
    EXPECT_EQ(messages.text("GENERAL", 2), "next");
}

TEST_F(GmsgRetrieveMessage, SetsNameIgnoresLetterCase) {
    const Messages messages;
    EXPECT_EQ(messages.text("General", 1), "first");
}

TEST_F(GmsgRetrieveMessage, UnknownSetIsNotFound) {
    const Messages messages;
    EXPECT_EQ(messages.text("OTHER", 1), "(code 15)");
    EXPECT_EQ(messages.text("", 1), "(code 15)");
}

TEST_F(GmsgRetrieveMessage, SetWhoseValueExpandsToNothingIsNotFound) {
    site_.write("sets", "GENERAL=%NO_SUCH_SETTING\n");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "(code 15)");
}

TEST_F(GmsgRetrieveMessage, ReferencesInTheSetsValueAreExpanded) {
    site_.write("sets", "PLACE=" + site_.name("") + "\nGENERAL=%PLACE\\general\n");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 2), "second");
}

TEST_F(GmsgRetrieveMessage, SetWithoutAFileIsNotLocated) {
    add_set("ABSENT", "absent");
    const Messages messages;
    EXPECT_EQ(messages.text("ABSENT", 1), "(code 12)");
    EXPECT_EQ(messages->set_name, nullptr);
}

TEST_F(GmsgRetrieveMessage, FailingSetLeavesTheHandleGoodForOthers) {
    add_set("ABSENT", "absent");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    EXPECT_EQ(messages.text("ABSENT", 1), "(code 12)");
    EXPECT_EQ(messages.text("ABSENT", 1), "(code 12)");
    EXPECT_EQ(messages.text("NO_SUCH", 1), "(code 15)");
    EXPECT_EQ(messages.text("GENERAL", 2), "second");
}

TEST_F(GmsgRetrieveMessage, MsgGoesBeforeTheLanguageAndTheLanguageBeforeTheBareName) {
    add_set("MANY", "many");
    site_.write("many", "bare\n");
    const Messages messages;
    EXPECT_EQ(messages.text("MANY", 1), "bare");
    site_.write("many.eng", "english\n");
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    EXPECT_EQ(messages.text("MANY", 1), "english");
    site_.write("many.msg", "msg\n");
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    EXPECT_EQ(messages.text("MANY", 1), "msg");
}

TEST_F(GmsgRetrieveMessage, ValueWithAnEndingIsFoundAsItIsUnlessMsgFollowsIt) {
    add_set("ENDED", "ended.txt");
    site_.write("ended.txt", "as it is\n");
    const Messages messages;
    EXPECT_EQ(messages.text("ENDED", 1), "as it is");
    site_.write("ended.txt.msg", "with msg\n");
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    EXPECT_EQ(messages.text("ENDED", 1), "with msg");
}

TEST_F(GmsgRetrieveMessage, DirectoryInPlaceOfTheFileCannotBeLoaded) {
    add_set("FOLDER", "folder");
    site_.make_directory("folder.msg");
    const Messages messages;
    EXPECT_EQ(messages.text("FOLDER", 1), "(code 14)");
    EXPECT_EQ(messages->list, nullptr);
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
}

TEST_F(GmsgRetrieveMessage, FileThatMayNotBeReadCannotBeLoaded) {
    const orvix::test::Denial denial = orvix::test::Denial::of_reading("general.eng");
    std::filesystem::permissions(".", std::filesystem::perms::all);
    EXPECT_TRUE(orvix::test::holds_for_ordinary_user([] {
        const Messages messages;
        return messages.text("GENERAL", 1) == "(code 14)";
    }));
}

TEST_F(GmsgRetrieveMessage, EmptyFileHasNoMessages) {
    site_.write("general.eng", "");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "(code 20)");
}

TEST_F(GmsgRetrieveMessage, BinaryFileIsReadAsLines) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    site_.write("general.eng", bytes + bytes);
    const Messages messages;
    // Bytes 0 to 10 are a line that a zero byte ends; the line behind it is cut at byte 13.
    EXPECT_EQ(messages.text("GENERAL", 1), "");
    EXPECT_EQ(messages.text("GENERAL", 2), "\x0b\x0c");
    EXPECT_EQ(messages.text("GENERAL", 3), "\x0b\x0c");
    EXPECT_EQ(messages.text("GENERAL", 4), "(code 20)");
}

TEST_F(GmsgRetrieveMessage, LargeFileIsRead) {
    std::string bytes;
    for (int i = 1; i <= 100'000; ++i) bytes += "message number " + std::to_string(i) + "\n";
    site_.write("general.eng", bytes);
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 100'000), "message number 100000");
    EXPECT_EQ(messages.text("GENERAL", 50'000), "message number 50000");
    EXPECT_EQ(messages.text("GENERAL", 100'001), "(code 20)");
}

TEST_F(GmsgRetrieveMessage, SameSetIsReadOnce) {
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    site_.remove("general.eng");
    EXPECT_EQ(messages.text("GENERAL", 2), "second");
    EXPECT_EQ(messages.text("GENERAL", 5), "(code 20)");
    EXPECT_EQ(messages.text("GENERAL", 4), "last");
}

TEST_F(GmsgRetrieveMessage, OtherSetInBetweenCausesAReload) {
    add_set("OTHER", "other");
    site_.write("other.eng", "other\n");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    EXPECT_EQ(messages.text("OTHER", 1), "other");
    site_.write("general.eng", "changed\n");
    EXPECT_EQ(messages.text("GENERAL", 1), "changed");
}

TEST_F(GmsgRetrieveMessage, OtherHandleInBetweenCausesAReload) {
    const Messages one;
    const Messages two;
    EXPECT_EQ(one.text("GENERAL", 1), "first");
    EXPECT_EQ(two.text("GENERAL", 1), "first");
    site_.write("general.eng", "changed\n");
    EXPECT_EQ(two.text("GENERAL", 1), "first");
    EXPECT_EQ(one.text("GENERAL", 1), "changed");
    EXPECT_EQ(two.text("GENERAL", 1), "changed");
}

TEST_F(GmsgRetrieveMessage, OpeningAnotherHandleCausesAReload) {
    const Messages one;
    EXPECT_EQ(one.text("GENERAL", 1), "first");
    site_.write("general.eng", "changed\n");
    const Messages two;
    EXPECT_EQ(one.text("GENERAL", 1), "changed");
}

TEST_F(GmsgRetrieveMessage, OtherSpellingOfTheSetsNameCausesAReload) {
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
    site_.write("general.eng", "changed\n");
    EXPECT_EQ(messages.text("general", 1), "changed");
}

TEST_F(GmsgRetrieveMessage, SetsNamesOfAnyLengthFollowEachOther) {
    const std::string long_name(60, 'L');
    add_set(long_name, "long");
    add_set("S", "short");
    site_.write("long.eng", "long\n");
    site_.write("short.eng", "short\n");
    const Messages messages;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(messages.text("S", 1), "short");
        EXPECT_EQ(messages.text(long_name.c_str(), 1), "long");
        EXPECT_EQ(messages.text("GENERAL", 1), "first");
    }
}

TEST_F(GmsgRetrieveMessage, SetMayBeNamedByTheHandleItself) {
    const Messages one;
    const Messages two;
    EXPECT_EQ(one.text("GENERAL", 1), "first");
    EXPECT_EQ(two.text("GENERAL", 1), "first");
    EXPECT_EQ(one.text(one->set_name, 2), "second");
}

TEST_F(GmsgRetrieveMessage, NewHandleDoesNotTakeOverAClosedOnesSet) {
    {
        const Messages messages;
        EXPECT_EQ(messages.text("GENERAL", 1), "first");
    }
    site_.write("general.eng", "changed\n");
    const Messages messages;
    EXPECT_EQ(messages.text("GENERAL", 1), "changed");
}

class GmsgCheckIndex : public GmsgRetrieveMessage {};

TEST_F(GmsgCheckIndex, IsTrueForEveryLineOfTheSet) {
    const Messages messages;
    for (const int line : {1, 2, 3, 4}) {
        EXPECT_TRUE(gmsg_check_index(messages.handle(), "GENERAL", line)) << line;
        EXPECT_EQ(GuiErrno, GUI_ERR_NONE);
    }
    EXPECT_FALSE(gmsg_check_index(messages.handle(), "GENERAL", 5));
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_BAD_LINE_NUMBER);
}

TEST_F(GmsgCheckIndex, LoadsTheSet) {
    const Messages messages;
    EXPECT_TRUE(gmsg_check_index(messages.handle(), "GENERAL", 1));
    EXPECT_STREQ(messages->set_name, "GENERAL");
    site_.remove("general.eng");
    EXPECT_EQ(messages.text("GENERAL", 1), "first");
}

TEST_F(GmsgCheckIndex, TellsItsFailuresInOrder) {
    const Messages messages;
    EXPECT_FALSE(gmsg_check_index(nullptr, nullptr, 0));
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_NOT_INITIALIZED);
    EXPECT_FALSE(gmsg_check_index(messages.handle(), nullptr, 0));
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_BAD_LINE_NUMBER);
    EXPECT_FALSE(gmsg_check_index(messages.handle(), nullptr, 1));
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_SET_NOT_SPECIFIED);
    EXPECT_FALSE(gmsg_check_index(messages.handle(), "OTHER", 1));
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_FIND_SET);
}

TEST_F(GmsgCheckIndex, HandleWithoutADirectoryIsNotInitialised) {
    GmsgHandleS empty{};
    EXPECT_FALSE(gmsg_check_index(&empty, "GENERAL", 1));
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_NOT_INITIALIZED);
}

}  // namespace
