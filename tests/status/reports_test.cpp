#include "status/recording_handler.h"

#include <orvix/gsl/error_handler.h>
#include <orvix/gsl/pending_error.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using orvix::test::error;
using orvix::test::info;
using orvix::test::Recorder;
using orvix::test::warning;
using testing::ElementsAre;

class Reports : public testing::Test {
protected:
    void SetUp() override { clear(); }
    void TearDown() override { clear(); }

private:
    static void clear() {
        set_pending_error("");
        reset_pending_error_and_location();
    }
};

struct Output {
    std::string out;
    std::string err;

    bool operator==(const Output&) const = default;
};

template <class Call>
Output printed_by(Call call) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    call();
    Output output;
    output.err = testing::internal::GetCapturedStderr();
    output.out = testing::internal::GetCapturedStdout();
    return output;
}

TEST_F(Reports, WarningWithoutHandlersGoesToTheErrorStreamWithoutALineEnd) {
    EXPECT_EQ(printed_by([] { report_warning("w"); }), (Output{"", "WARNING w"}));
    EXPECT_EQ(printed_by([] { report_warning(std::string("w\n")); }), (Output{"", "WARNING w\n"}));
}

TEST_F(Reports, InformationWithoutHandlersGoesToTheOutputStreamWithoutALineEnd) {
    EXPECT_EQ(printed_by([] { report_info("i"); }), (Output{"INFO i", ""}));
    EXPECT_EQ(printed_by([] { report_info(std::string("i\n")); }), (Output{"INFO i\n", ""}));
}

TEST_F(Reports, EmptyTextsWithoutHandlersPrintNothing) {
    const char* const nothing = nullptr;
    EXPECT_EQ(printed_by([] { report_warning(""); }), Output{});
    EXPECT_EQ(printed_by([] { report_info(""); }), Output{});
    EXPECT_EQ(printed_by([=] { report_warning(nothing); }), Output{});
    EXPECT_EQ(printed_by([=] { report_info(nothing); }), Output{});
}

TEST_F(Reports, EmptyTextsAreDeliveredToAHandler) {
    Recorder handler;
    report_warning("");
    report_info("");
    EXPECT_THAT(handler.messages, ElementsAre(warning(""), info("")));
}

TEST_F(Reports, PercentSignsAreText) {
    EXPECT_EQ(printed_by([] { report_warning("100%s%n"); }), (Output{"", "WARNING 100%s%n"}));
}

TEST_F(Reports, TwoWarningTextsAreJoinedByOneNewline) {
    Recorder handler;
    report_warning("a", "b");
    report_warning("a\n", "b");
    report_warning("a", "\nb");
    report_warning("", "b");
    EXPECT_THAT(handler.messages, ElementsAre(warning("a\nb"), warning("a\nb"), warning("a\nb"), warning("b")));
}

TEST_F(Reports, TwoWarningStringsAreJoinedLikewise) {
    Recorder handler;
    report_warning(std::string("a"), std::string("b"));
    report_warning(std::string("a"), std::string(""));
    EXPECT_THAT(handler.messages, ElementsAre(warning("a\nb"), warning("a\n")));
}

TEST_F(Reports, TwoWarningTextsArePrintedAsOne) {
    EXPECT_EQ(printed_by([] { report_warning("a", "b\n"); }), (Output{"", "WARNING a\nb\n"}));
}

TEST_F(Reports, ErrorIsDeliveredWithItsLocationAndClearsEverything) {
    Recorder handler;
    add_error_location_info("here");
    report_error("e");
    EXPECT_THAT(handler.messages, ElementsAre(error("here\ne")));
    EXPECT_FALSE(error_pending());
    EXPECT_EQ(get_pending_error_with_location(), "");
}

TEST_F(Reports, ErrorReplacesAnEarlierPendingOne) {
    Recorder handler;
    set_pending_error("old");
    report_error(std::string("new"));
    EXPECT_THAT(handler.messages, ElementsAre(error("new")));
}

TEST_F(Reports, ErrorOfTwoTextsIsJoined) {
    Recorder handler;
    report_error("a", "b");
    report_error(std::string("c\n"), std::string("d"));
    EXPECT_THAT(handler.messages, ElementsAre(error("a\nb"), error("c\nd")));
}

TEST_F(Reports, ErrorWithoutHandlersPrintsLocationAndText) {
    add_error_location_info("here");
    EXPECT_EQ(printed_by([] { report_error("x"); }), (Output{"", "ERROR: here: x\n"}));
}

TEST_F(Reports, EmptyErrorWithoutHandlersPrintsTheHeadAlone) {
    EXPECT_EQ(printed_by([] { report_error(""); }), (Output{"", "ERROR: \n"}));
    EXPECT_EQ(printed_by([] { report_error(std::string()); }), (Output{"", "ERROR: \n"}));
}

}  // namespace
