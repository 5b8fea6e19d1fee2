#include "status/recording_handler.h"

#include <orvix/gsl/error_handler.h>
#include <orvix/gsl/pending_error.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <type_traits>

namespace {

using orvix::test::error;
using orvix::test::info;
using orvix::test::Onlooker;
using orvix::test::Recorder;
using orvix::test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(static_cast<int>(ErrorHandler::Category::Error) == 1);
static_assert(static_cast<int>(ErrorHandler::Category::Warning) == 2);
static_assert(static_cast<int>(ErrorHandler::Category::Info) == 4);
static_assert(std::is_same_v<std::underlying_type_t<ErrorHandler::Category>, std::int32_t>);
static_assert(!std::is_destructible_v<ErrorHandler> && std::has_virtual_destructor_v<ErrorHandler>);

// A handler that overrides nothing.
class Plain : public ErrorHandler {};

TEST(HandlerChain, NewestHandlerIsAskedFirst) {
    Recorder a;
    Recorder b;
    report_warning("w");
    EXPECT_THAT(b.messages, ElementsAre(warning("w")));
    EXPECT_THAT(a.messages, IsEmpty());
}

TEST(HandlerChain, DeclinedMessageGoesToTheNextOlderHandler) {
    Recorder a;
    Onlooker b;
    Onlooker c;
    report_warning("w");
    EXPECT_THAT(c.messages, ElementsAre(warning("w")));
    EXPECT_THAT(b.messages, ElementsAre(warning("w")));
    EXPECT_THAT(a.messages, ElementsAre(warning("w")));
}

TEST(HandlerChain, MessageThatNobodyTakesIsDroppedInSilence) {
    Onlooker a;
    Onlooker b;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    report_info("i");
    report_warning("w");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(a.messages, ElementsAre(info("i"), warning("w")));
}

TEST(HandlerChain, HandlerThatOverridesNothingTakesAndDropsEverything) {
    Recorder a;
    const Plain b;
    report_warning("w");
    report_info("i");
    report_error("e");
    EXPECT_THAT(a.messages, IsEmpty());
    EXPECT_FALSE(error_pending());
}

TEST(HandlerChain, DestroyingInReverseOrderEmptiesIt) {
    {
        Recorder a;
        { Recorder b; }
        report_warning("w");
        EXPECT_THAT(a.messages, ElementsAre(warning("w")));
    }
    testing::internal::CaptureStderr();
    report_warning("w");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "WARNING w");
}

TEST(HandlerChain, DestroyingTheOldestFirstTakesTheNewerOutOfTheChain) {
    std::optional<Recorder> a;
    std::optional<Recorder> b;
    a.emplace();
    b.emplace();
    a.reset();
    testing::internal::CaptureStderr();
    report_warning("w");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "WARNING w");
    EXPECT_THAT(b->messages, IsEmpty());

    b.reset();
    testing::internal::CaptureStderr();
    report_warning("w");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "WARNING w");
}

TEST(HandlerChain, DestroyingAMiddleOneMovesTheHeadToItsSuccessor) {
    Recorder a;
    std::optional<Recorder> b;
    std::optional<Recorder> c;
    b.emplace();
    c.emplace();
    b.reset();
    report_warning("w");
    EXPECT_THAT(a.messages, ElementsAre(warning("w")));
    EXPECT_THAT(c->messages, IsEmpty());

    c.reset();
    report_info("i");
    EXPECT_THAT(a.messages, ElementsAre(warning("w"), info("i")));
}

TEST(HandlerChain, HandlerConstructedAfterThatJoinsTheNewHead) {
    Recorder a;
    std::optional<Recorder> b;
    std::optional<Recorder> c;
    b.emplace();
    c.emplace();
    b.reset();
    Onlooker d;
    report_warning("w");
    EXPECT_THAT(d.messages, ElementsAre(warning("w")));
    EXPECT_THAT(a.messages, ElementsAre(warning("w")));
    EXPECT_THAT(c->messages, IsEmpty());
}

TEST(HandlerChain, HandlerOutsideItStillReachesTheOnesBehindTheRemovedOne) {
    Recorder a;
    auto b = std::make_unique<Recorder>();
    const auto c = std::make_unique<Onlooker>();
    b.reset();
    c->report_warning("w");
    EXPECT_THAT(c->messages, ElementsAre(warning("w")));
    EXPECT_THAT(a.messages, ElementsAre(warning("w")));
}

TEST(HandlerChain, HandlerOutsideItOutlivesAllOthers) {
    auto a = std::make_unique<Recorder>();
    auto b = std::make_unique<Recorder>();
    auto c = std::make_unique<Onlooker>();
    const auto d = std::make_unique<Onlooker>();
    b.reset();
    a.reset();
    c.reset();
    d->report_warning("w");
    EXPECT_THAT(d->messages, ElementsAre(warning("w")));
}

TEST(ErrorHandler, MembersStartAtTheirOwnHandler) {
    Recorder a;
    Onlooker b;
    Recorder c;
    b.report_warning("w");
    b.report_info(std::string("i"));
    b.report_error("e");
    EXPECT_THAT(c.messages, IsEmpty());
    EXPECT_THAT(b.messages, ElementsAre(warning("w"), info("i"), error("e")));
    EXPECT_THAT(a.messages, ElementsAre(warning("w"), info("i"), error("e")));
}

TEST(ErrorHandler, ReportErrorClearsTheFlagAndLeavesThePendingText) {
    Recorder handler;
    set_pending_error("pending");
    handler.report_error("e");
    EXPECT_FALSE(error_pending());
    EXPECT_THAT(handler.messages, ElementsAre(error("e")));
    std::string text;
    EXPECT_TRUE(get_pending_error(&text));
    EXPECT_EQ(text, "pending");
}

TEST(ErrorHandler, WarningsAndInformationLeaveTheFlag) {
    Recorder handler;
    set_pending_error("pending");
    handler.report_warning(std::string("w"));
    handler.report_info("i");
    EXPECT_TRUE(error_pending());
    reset_pending_error();
}

TEST(ErrorHandler, MembersHandOnTextsAsTheyAre) {
    Recorder handler;
    handler.report_error(std::string("e\n"));
    handler.report_warning(std::string());
    handler.report_info("100 %s");
    EXPECT_THAT(handler.messages, ElementsAre(error("e\n"), warning(""), info("100 %s")));
}

TEST(ErrorHandler, MembersTakeNullForEmpty) {
    Recorder handler;
    const char* const nothing = nullptr;
    handler.report_error(nothing);
    handler.report_warning(nothing);
    handler.report_info(nothing);
    EXPECT_THAT(handler.messages, ElementsAre(error(""), warning(""), info("")));
}

class Relay : public ErrorHandler {
    bool handle_message(Category category, const std::string& text) override {
        if (category == Category::Warning) report_info("relayed " + text);
        return category == Category::Warning;
    }
};

TEST(ErrorHandler, MayReportWhileItHandles) {
    Recorder a;
    const Relay b;
    report_warning("w");
    EXPECT_THAT(a.messages, ElementsAre(info("relayed w")));
}

}  // namespace
