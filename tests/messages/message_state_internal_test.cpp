// Separator and debug mode are settled once in a process; here each test starts as a fresh process would.

#include "messages/message_site.h"
#include "messages/message_state.h"

#include <gtest/gtest.h>

namespace {

using orvix::test::Messages;
using orvix::test::MessageSite;
using orvix::test::ScopedVariable;

class FreshProcess : public testing::Test {
protected:
    FreshProcess() {
        orvix::gsl::gmsg_environment_ready = false;
        orvix::gsl::gmsg_debug = false;
    }

    template <class Call>
    static std::string printed_by(Call call) {
        testing::internal::CaptureStderr();
        call();
        return testing::internal::GetCapturedStderr();
    }

    MessageSite site_;
};

class MsgSeparator : public FreshProcess {
protected:
    // A message of the default language, fetched with this separator set.
    std::string fetched(const std::string& separator, const std::string& message) {
        site_.write_settings("hxorvix", "MSG_SEPARATOR=" + separator + "\n");
        site_.write_english(message + "\n");
        return Messages().text("GENERAL", 1);
    }
};

TEST_F(MsgSeparator, OfOneByteBecomesALineFeed) { EXPECT_EQ(fetched("|", "a|b||c"), "a\nb\n\nc"); }

TEST_F(MsgSeparator, OfSeveralBytesKeepsAllButTheFirst) { EXPECT_EQ(fetched("<br>", "a<br>b<b>c"), "a\nbr>b<b>c"); }

TEST_F(MsgSeparator, SearchGoesOnOneByteBehindTheLastPlace) { EXPECT_EQ(fetched("xx", "axxxb"), "a\n\nxb"); }

TEST_F(MsgSeparator, MayHaveSevenBytes) { EXPECT_EQ(fetched("1234567", "a1234567b"), "a\n234567b"); }

TEST_F(MsgSeparator, OfEightBytesDoesNotFitAndTheDefaultStays) {
    EXPECT_EQ(fetched("12345678",
                      "a12345678b\x0e"
                      "c"),
              "a12345678b\nc");
}

TEST_F(MsgSeparator, IsExpanded) {
    const ScopedVariable variable("OR_SEP", "@");
    EXPECT_EQ(fetched("$OR_SEP", "a@b"), "a\nb");
}

TEST_F(MsgSeparator, ThatExpandsToNothingLeavesTheDefault) {
    EXPECT_EQ(fetched("%NO_SUCH_SETTING",
                      "a\x0e"
                      "b"),
              "a\nb");
}

TEST_F(MsgSeparator, ThatIsEmptyReplacesNothing) {
    // The expansion cuts the colon at the end, and an empty text is left.
    EXPECT_EQ(fetched(":",
                      "a\x0e"
                      "b:c"),
              "a\x0e"
              "b:c");
}

TEST_F(MsgSeparator, IsReadOnceInAProcess) {
    EXPECT_EQ(fetched("|", "a|b/c"), "a\nb/c");
    gui_env_deinit(false);
    EXPECT_EQ(fetched("/", "a|b/c"), "a\nb/c");
}

TEST_F(MsgSeparator, IsNotTakenFromTheBootFile) {
    site_.write_english(
        "a|b\x0e"
        "c\n");
    site_.write_settings("hxorvixsess", "MSG_SEPARATOR=|\nHXORVIX_MSG_FILE=" + site_.name("sets") + "\n");
    EXPECT_EQ(Messages().text("GENERAL", 1), "a|b\nc");
}

class GmsgDebugLines : public FreshProcess {
protected:
    GmsgDebugLines() { site_.write_english("one\n"); }

    std::string sets() const { return site_.name("sets"); }
    std::string opening() const {
        return "gmsg: hxorvixsess : hxorvix_MSG_FILE = " + sets() + "\ngmsg: msg_directory_filename = " + sets() + "\n";
    }
};

TEST_F(GmsgDebugLines, AreSilentInOtherModes) {
    for (const char* mode : {static_cast<const char*>(nullptr), "", "error", "MSG", "msg,all"}) {
        const ScopedVariable variable("HXORVIX_DEBUG_MODE", mode);
        EXPECT_EQ(printed_by([] { EXPECT_EQ(Messages().text("GENERAL", 1), "one"); }), "");
    }
}

TEST_F(GmsgDebugLines, TellWhatAnOpenFinds) {
    for (const char* mode : {"msg", "all"}) {
        orvix::gsl::gmsg_debug = false;
        const ScopedVariable variable("HXORVIX_DEBUG_MODE", mode);
        EXPECT_EQ(printed_by([] { const Messages messages; }), opening());
    }
}

TEST_F(GmsgDebugLines, TellWhereASetIs) {
    const ScopedVariable variable("HXORVIX_DEBUG_MODE", "msg");
    const Messages messages;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(messages.text("GENERAL", 1), "one"); }),
              "gmsg: GENERAL = " + site_.name("general") + "\n");
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(messages.text("GENERAL", 1), "one"); }), "");
}

TEST_F(GmsgDebugLines, TellOfAnUnknownSet) {
    const ScopedVariable variable("HXORVIX_DEBUG_MODE", "msg");
    const Messages messages;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(messages.text("OTHER", 1), "(code 15)"); }),
              "gmsg: OTHER = \ngmsg: ERROR = Unable to find message set for message retrieval\n");
}

TEST_F(GmsgDebugLines, TellOfAMissingDirectorySetting) {
    const ScopedVariable variable("HXORVIX_DEBUG_MODE", "msg");
    EXPECT_EQ(printed_by([] { EXPECT_EQ(Messages("nowhere", "app").handle(), nullptr); }),
              "gmsg: nowhere : app_MSG_FILE = \n"
              "gmsg: ERROR = Unable to get directory file name for message retrieval\n");
}

TEST_F(GmsgDebugLines, TellOfAMissingDirectoryFile) {
    site_.remove("sets");
    const ScopedVariable variable("HXORVIX_DEBUG_MODE", "msg");
    EXPECT_EQ(printed_by([] { EXPECT_EQ(Messages().handle(), nullptr); }),
              "gmsg: hxorvixsess : hxorvix_MSG_FILE = " + sets() +
                  "\ngmsg: ERROR = Unable to locate message file for message retrieval\n");
}

TEST_F(GmsgDebugLines, StayOnWhenTheVariableIsGone) {
    {
        const ScopedVariable variable("HXORVIX_DEBUG_MODE", "all");
        printed_by([] { const Messages messages; });
    }
    EXPECT_EQ(printed_by([] { const Messages messages; }), opening());
}

}  // namespace
