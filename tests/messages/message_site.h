// An installation with an application's boot file, a message directory file and message files, in a directory of its
// own.
#pragma once

#include "support/temporary_directory.h"

#include <orvix/gsl/environment.h>
#include <orvix/gsl/messages.h>
#include <orvix/gsl/status.h>

#include <string>
#include <string_view>

namespace orvix::test {

class MessageSite {
public:
    MessageSite()
        : root_("HXORVIX_DIR", directory_.name("root").c_str()), home_("HOME", directory_.name("home").c_str()) {
        gui_env_deinit(false);
    }
    ~MessageSite() { gui_env_deinit(false); }
    MessageSite(const MessageSite&) = delete;
    MessageSite& operator=(const MessageSite&) = delete;

    // The name of a file of the site, in the library's form.
    std::string name(std::string_view file) const { return directory_.name(file); }
    std::string write(std::string_view file, std::string_view bytes) const { return directory_.write(file, bytes); }
    void remove(std::string_view file) const { std::filesystem::remove_all(directory_.path() / file); }
    void make_directory(std::string_view file) const { std::filesystem::create_directories(directory_.path() / file); }

    // A file of settings that the installation holds for an environment.
    void write_settings(const std::string& environment, std::string_view lines) const {
        directory_.write("root/config/" + environment + ".cfg", lines);
    }

    // Boot file and message directory file with the set GENERAL in the file general.eng, all in English.
    void write_english(std::string_view general) const {
        write_settings("hxorvixsess", "HXORVIX_MSG_FILE=" + name("sets") +
                                          "\nHXORVIX_LANGUAGE=ENGLISH\nENGLISH_MSG_EXT=eng\nENGLISH_MSG_FONT=fixed\n");
        write("sets", "GENERAL=" + name("general") + "\n");
        write("general.eng", general);
    }

private:
    TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
    ScopedVariable root_;
    ScopedVariable home_;
    ScopedVariable custom_{"QDS_CUSTOM_DIR", nullptr};
    ScopedVariable debug_{"HXORVIX_DEBUG_MODE", nullptr};
};

// A handle for the length of a scope.
class Messages {
public:
    explicit Messages(const char* boot_file = nullptr, const char* prefix = nullptr, const char* language = nullptr)
        : handle_(gmsg_open(boot_file, prefix, language)) {}
    ~Messages() { gmsg_close(handle_); }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    GmsgHandleS* handle() const { return handle_; }
    const GmsgHandleS* operator->() const { return handle_; }

    // "(code N)" if there is no such message.
    std::string text(const char* set, int line) const {
        char out[1024] = "untouched";
        if (gmsg_retrieve_message(handle_, set, line, out)) return out;
        const std::string code = "(code " + std::to_string(GuiErrno) + ")";
        return out == std::string_view("untouched") ? code : code + " and " + out;
    }

private:
    GmsgHandleS* handle_;
};

}  // namespace orvix::test
