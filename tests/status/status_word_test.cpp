#include "support/temporary_directory.h"

#include <orvix/gsl/status.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using testing::StrEq;

class StatusWord : public testing::Test {
protected:
    void SetUp() override { gerror_set_all_errors(GUI_ERR_NONE, 0); }
    void TearDown() override { gerror_set_all_errors(GUI_ERR_NONE, 0); }
};

template <class Call>
std::string printed_by(Call call) {
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

TEST_F(StatusWord, SettersStoreTheirOwnHalf) {
    gerror_set_error(GUI_ERR_FILE_OPEN);
    gerror_set_system_error(13);
    EXPECT_EQ(gerror_get_error(), GUI_ERR_FILE_OPEN);
    EXPECT_EQ(gerror_get_system_error(), 13);

    gerror_set_error(GUI_ERR_FILE_READ);
    EXPECT_EQ(gerror_get_system_error(), 13);
    gerror_set_system_error(5);
    EXPECT_EQ(gerror_get_error(), GUI_ERR_FILE_READ);
}

TEST_F(StatusWord, BothHalvesAreSetAndReadAtOnce) {
    gerror_set_all_errors(GUI_ERR_CLOCK_STOP, -4);
    GuiError error = GUI_ERR_NONE;
    int system_error = 0;
    gerror_get_all_errors(&error, &system_error);
    EXPECT_EQ(error, GUI_ERR_CLOCK_STOP);
    EXPECT_EQ(system_error, -4);
}

TEST_F(StatusWord, ApplicationsMayWriteTheVariable) {
    GuiErrno = GUI_ERR_FILE_WRITE;
    EXPECT_EQ(gerror_get_error(), GUI_ERR_FILE_WRITE);
    EXPECT_STREQ(gerror_get_error_message(), "Error writing file");
}

TEST_F(StatusWord, SuccessIsOutOfRange) {
    EXPECT_STREQ(gerror_get_error_message(), "GuiErrno out of range");
    EXPECT_EQ(printed_by(gerror_display_error_message), "GuiErrno out of range\n");
}

TEST_F(StatusWord, EveryCodeHasItsText) {
    const char* const texts[] = {
        "System library call failed",
        "Unable to allocate memory for message retrieval",
        "Unable to allocate memory for message set",
        "Unable to free resources from message retrieval handle",
        "Unable to open HX Orvix environment for message retrieval",
        "Unable to open application boot file for message retrieval",
        "Unable to get HXORVIX_LANGUAGE variable for message retrieval",
        "Unable to get language extension for message retrieval",
        "Unable to get language font for message retrieval",
        "Unable to get directory file name for message retrieval",
        "Unable to expand directory file name for message retrieval",
        "Unable to locate message file for message retrieval",
        "Unable to open environment file for message retrieval",
        "Unable to load message file for message retrieval",
        "Unable to find message set for message retrieval",
        "Unable to manipulate message set for message retrieval",
        "Unable to resolve message list size for message retrieval",
        "Message set not specified for message retreival",
        "Message file system not initialized",
        "Invalid message retrieval line number",
        "Failed to retrieve message",
        "Cannot find file",
        "Cannot open file",
        "Error reading file",
        "Error writing file",
        "Unable to delete file",
        "Unable to allocate memory for file copy operation",
        "Unable to seek to beginning of file",
        "Clock start failed",
        "Clock stop failed",
    };
    int code = 0;
    for (const char* text : texts) {
        gerror_set_error(static_cast<GuiError>(++code));
        EXPECT_STREQ(gerror_get_error_message(), text) << code;
    }
    EXPECT_EQ(code, 30);
}

TEST_F(StatusWord, NumbersBelowOneAndAbove248AreOutOfRange) {
    for (int code : {-1, INT_MIN, 249, INT_MAX}) {
        gerror_set_error(static_cast<GuiError>(code));
        EXPECT_STREQ(gerror_get_error_message(), "GuiErrno out of range") << code;
    }
}

TEST_F(StatusWord, NumbersFrom31To248PassTheTestWithoutAText) {
    for (int code = 31; code <= 248; ++code) {
        gerror_set_error(static_cast<GuiError>(code));
        EXPECT_STREQ(gerror_get_error_message(), "") << code;
    }
}

TEST_F(StatusWord, DisplayPrintsTheTextAndALineEnd) {
    gerror_set_error(GUI_ERR_FILE_DELETE);
    EXPECT_EQ(printed_by(gerror_display_error_message), "Unable to delete file\n");
}

TEST_F(StatusWord, SystemTextIsTheSystemsOwn) {
    gerror_set_system_error(2);
    EXPECT_STREQ(gerror_get_system_error_message(), std::strerror(2));
}

TEST_F(StatusWord, SystemErrorOfZeroOrBelowIsOutOfRange) {
    for (int number : {0, -1, INT_MIN, INT_MAX}) {
        gerror_set_system_error(number);
        EXPECT_STREQ(gerror_get_system_error_message(), "system errno out of range") << number;
    }
}

TEST_F(StatusWord, DisplayAllPrintsNothingWithoutErrors) {
    EXPECT_EQ(printed_by(gerror_display_all_error_messages), "");
}

TEST_F(StatusWord, DisplayAllPrintsBothTexts) {
    gerror_set_all_errors(GUI_ERR_FILE_NOT_FOUND, 2);
    EXPECT_EQ(printed_by(gerror_display_all_error_messages),
              std::string("Cannot find file : ") + std::strerror(2) + "\n");
}

TEST_F(StatusWord, DisplayAllPrintsTheLibrarysTextAlone) {
    gerror_set_all_errors(GUI_ERR_FILE_NOT_FOUND, 0);
    EXPECT_EQ(printed_by(gerror_display_all_error_messages), "Cannot find file\n");
}

TEST_F(StatusWord, DisplayAllPrintsTheSystemsTextAlone) {
    gerror_set_all_errors(GUI_ERR_NONE, 2);
    EXPECT_EQ(printed_by(gerror_display_all_error_messages), std::string(std::strerror(2)) + "\n");
}

// Each in a process of its own, because the mode stays on once it was seen on.
class DebugInfoDeathTest : public StatusWord {};

[[noreturn]] void end_process() { std::_Exit(0); }

TEST_F(DebugInfoDeathTest, PrintsNothingWhileTheModeIsOff) {
    for (const char* mode : {static_cast<const char*>(nullptr), "", "msg", "Error", "error,all"}) {
        const orvix::test::ScopedVariable variable("HXORVIX_DEBUG_MODE", mode);
        gerror_set_error(GUI_ERR_FILE_READ);
        EXPECT_EXIT(
            {
                gerror_display_debug_info("a.c", 1);
                end_process();
            },
            testing::ExitedWithCode(0), StrEq(""));
    }
}

TEST_F(DebugInfoDeathTest, PrintsLineFileAndMessagesInModeErrorAndAll) {
    for (const char* mode : {"error", "all"}) {
        const orvix::test::ScopedVariable variable("HXORVIX_DEBUG_MODE", mode);
        gerror_set_error(GUI_ERR_FILE_READ);
        EXPECT_EXIT(
            {
                gerror_display_debug_info("a.c", 42);
                end_process();
            },
            testing::ExitedWithCode(0), StrEq("\n? Error at line 42 of file a.c\nError reading file\n"));
    }
}

TEST_F(DebugInfoDeathTest, KeepsPrintingAfterTheVariableIsGone) {
    EXPECT_EXIT(
        {
            {
                const orvix::test::ScopedVariable variable("HXORVIX_DEBUG_MODE", "all");
                gerror_display_debug_info("a.c", 1);
            }
            const orvix::test::ScopedVariable variable("HXORVIX_DEBUG_MODE", nullptr);
            gerror_display_debug_info("b.c", 2);
            end_process();
        },
        testing::ExitedWithCode(0), StrEq("\n? Error at line 1 of file a.c\n\n? Error at line 2 of file b.c\n"));
}

TEST_F(DebugInfoDeathTest, IsNotSwitchedOnByACallInModeOff) {
    EXPECT_EXIT(
        {
            const orvix::test::ScopedVariable variable("HXORVIX_DEBUG_MODE", nullptr);
            gerror_display_debug_info("a.c", 1);
            gerror_display_debug_info("b.c", 2);
            end_process();
        },
        testing::ExitedWithCode(0), StrEq(""));
}

}  // namespace
