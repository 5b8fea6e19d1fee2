#include "messages/message_site.h"

#include <gtest/gtest.h>

namespace {

using orvix::test::Messages;
using orvix::test::MessageSite;

class GmsgOpen : public testing::Test {
protected:
    // A boot file of the default name with these lines behind the one for the directory file.
    void write_boot(const std::string& lines) {
        site_.write("sets", "GENERAL=" + site_.name("general") + "\n");
        site_.write_settings("hxorvixsess", "HXORVIX_MSG_FILE=" + site_.name("sets") + "\n" + lines);
    }

    // The code with which opening fails; it must fail.
    static GuiError failure(const char* boot_file = nullptr, const char* prefix = nullptr) {
        GuiErrno = GUI_ERR_NONE;
        const Messages messages(boot_file, prefix);
        const GuiError code = GuiErrno;
        EXPECT_EQ(messages.handle(), nullptr);
        return code;
    }

    MessageSite site_;
};

TEST_F(GmsgOpen, WithoutArgumentsUsesTheDefaultBootFileAndPrefix) {
    write_boot("HXORVIX_LANGUAGE=FRENCH\nFRENCH_MSG_EXT=fra\nFRENCH_MSG_FONT=latin\n");
    const Messages messages;
    ASSERT_NE(messages.handle(), nullptr);
    EXPECT_EQ(GuiErrno, GUI_ERR_NONE);
    EXPECT_STREQ(messages->language, "FRENCH");
    EXPECT_STREQ(messages->extension, "fra");
    EXPECT_STREQ(messages->font, "latin");
    EXPECT_EQ(messages->set_name, nullptr);
    EXPECT_EQ(messages->list, nullptr);
    EXPECT_NE(messages->directory, nullptr);
}

TEST_F(GmsgOpen, EmptyArgumentsCountAsNone) {
    write_boot("HXORVIX_LANGUAGE=FRENCH\nFRENCH_MSG_EXT=fra\nFRENCH_MSG_FONT=latin\n");
    const Messages messages("", "", "");
    ASSERT_NE(messages.handle(), nullptr);
    EXPECT_STREQ(messages->language, "FRENCH");
}

TEST_F(GmsgOpen, BootFileAndPrefixMayBeTheApplicationsOwn) {
    site_.write("sets", "");
    site_.write_settings("router", "LAYOUT_MSG_FILE=" + site_.name("sets") +
                                       "\nHXORVIX_LANGUAGE=ENGLISH\nENGLISH_MSG_EXT=eng\nENGLISH_MSG_FONT=fixed\n");
    const Messages messages("router", "layout");
    EXPECT_NE(messages.handle(), nullptr);
    EXPECT_EQ(GuiErrno, GUI_ERR_NONE);
}

TEST_F(GmsgOpen, LanguageOfTheCallerGoesBeforeTheOneThatIsSet) {
    write_boot("HXORVIX_LANGUAGE=FRENCH\nGERMAN_MSG_EXT=ger\nGERMAN_MSG_FONT=latin\n");
    const Messages messages(nullptr, nullptr, "German");
    ASSERT_NE(messages.handle(), nullptr);
    EXPECT_EQ(GuiErrno, GUI_ERR_NONE);
    EXPECT_STREQ(messages->language, "German");
    EXPECT_STREQ(messages->extension, "ger");
}

TEST_F(GmsgOpen, WithoutAnySettingTheDefaultsDoAndTheLastIsTold) {
    write_boot("");
    const Messages messages;
    ASSERT_NE(messages.handle(), nullptr);
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_GET_LANG_FONT);
    EXPECT_STREQ(messages->language, "ENGLISH");
    EXPECT_STREQ(messages->extension, "eng");
    EXPECT_STREQ(messages->font, "9x15bold");
}

TEST_F(GmsgOpen, DefaultLanguageAloneIsTold) {
    write_boot("ENGLISH_MSG_EXT=en\nENGLISH_MSG_FONT=fixed\n");
    const Messages messages;
    ASSERT_NE(messages.handle(), nullptr);
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_GET_LANGUAGE);
    EXPECT_STREQ(messages->extension, "en");
}

TEST_F(GmsgOpen, DefaultExtensionAloneIsTold) {
    write_boot("HXORVIX_LANGUAGE=FRENCH\nFRENCH_MSG_FONT=latin\n");
    const Messages messages;
    ASSERT_NE(messages.handle(), nullptr);
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_GET_LANG_EXT);
    EXPECT_STREQ(messages->extension, "eng");
    EXPECT_STREQ(messages->font, "latin");
}

TEST_F(GmsgOpen, ValueTooLongForItsRoomLeavesTheDefault) {
    write_boot("HXORVIX_LANGUAGE=FRENCH\nFRENCH_MSG_EXT=" + std::string(2048, 'x') +
               "\nFRENCH_MSG_FONT=" + std::string(2047, 'y') + "\n");
    const Messages messages;
    ASSERT_NE(messages.handle(), nullptr);
    EXPECT_EQ(GuiErrno, GUI_ERR_MSG_GET_LANG_EXT);
    EXPECT_STREQ(messages->extension, "eng");
    EXPECT_EQ(messages->font, std::string(2047, 'y'));
}

TEST_F(GmsgOpen, ReferencesInTheDirectoryFilesNameAreExpanded) {
    site_.write("texts/sets", "");
    site_.write_settings("hxorvixsess", "PLACE=" + site_.name("texts") + "\nHXORVIX_MSG_FILE=%PLACE\\sets\n");
    EXPECT_NE(Messages().handle(), nullptr);
}

TEST_F(GmsgOpen, MissingBootFileNamesNoDirectoryFile) {
    EXPECT_EQ(failure(), GUI_ERR_MSG_GET_DIR_FILE);
    EXPECT_EQ(failure("nowhere"), GUI_ERR_MSG_GET_DIR_FILE);
}

TEST_F(GmsgOpen, OtherPrefixIsAnotherSetting) {
    write_boot("");
    EXPECT_EQ(failure(nullptr, "layout"), GUI_ERR_MSG_GET_DIR_FILE);
}

TEST_F(GmsgOpen, DirectoryFilesNameThatExpandsToNothingIsMissing) {
    site_.write_settings("hxorvixsess", "HXORVIX_MSG_FILE=%NO_SUCH_SETTING\n");
    EXPECT_EQ(failure(), GUI_ERR_MSG_GET_DIR_FILE);
}

TEST_F(GmsgOpen, DirectoryFilesNameTooLongForItsRoomIsMissing) {
    site_.write_settings("hxorvixsess", "HXORVIX_MSG_FILE=" + std::string(2048, 'x') + "\n");
    EXPECT_EQ(failure(), GUI_ERR_MSG_GET_DIR_FILE);
}

TEST_F(GmsgOpen, DirectoryFileThatCannotBeReadIsNotLocated) {
    site_.write_settings("hxorvixsess", "HXORVIX_MSG_FILE=" + site_.name("missing") + "\n");
    EXPECT_EQ(failure(), GUI_ERR_MSG_LOCATE_FILE);
    site_.make_directory("missing");
    EXPECT_EQ(failure(), GUI_ERR_MSG_LOCATE_FILE);
}

TEST_F(GmsgOpen, DirectoryFileMayHoldAnything) {
    write_boot("");
    site_.write("sets", std::string("\0\xff=\x01\n=\n==\n\x1a", 10));
    EXPECT_NE(Messages().handle(), nullptr);
}

TEST_F(GmsgOpen, OldCodeIsCleared) {
    write_boot("HXORVIX_LANGUAGE=ENGLISH\nENGLISH_MSG_EXT=eng\nENGLISH_MSG_FONT=fixed\n");
    GuiErrno = GUI_ERR_FILE_DELETE;
    EXPECT_NE(Messages().handle(), nullptr);
    EXPECT_EQ(GuiErrno, GUI_ERR_NONE);
}

TEST(GmsgClose, NullIsTrueAndClearsTheCode) {
    GuiErrno = GUI_ERR_FILE_DELETE;
    EXPECT_TRUE(gmsg_close(nullptr));
    EXPECT_EQ(GuiErrno, GUI_ERR_NONE);
}

TEST_F(GmsgOpen, HandleWithALoadedSetIsClosed) {
    site_.write_english("one\n");
    GmsgHandleS* handle = gmsg_open(nullptr, nullptr, nullptr);
    ASSERT_TRUE(gmsg_check_index(handle, "GENERAL", 1));
    GuiErrno = GUI_ERR_FILE_DELETE;
    EXPECT_TRUE(gmsg_close(handle));
    EXPECT_EQ(GuiErrno, GUI_ERR_NONE);
}

}  // namespace
