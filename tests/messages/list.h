// A record list with the questions that tests put to it.
#pragma once

#include <orvix/gsl/record_list.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace orvix::test {

class List {
public:
    explicit List(int flags = 0) {
        if (!glist_create(&handle_, flags, nullptr, nullptr)) throw std::runtime_error("no list to be had");
    }
    explicit List(const std::vector<std::string>& texts) : List() {
        for (unsigned i = 0; i < texts.size(); ++i) put(i, texts[i]);
    }
    ~List() { glist_close(handle_); }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    void* handle() const { return handle_; }

    bool put(unsigned index, std::string text) { return glist_putstr(handle_, index, text.data()); }
    bool put_bytes(unsigned index, std::string bytes) {
        return glist_putrec(handle_, index, bytes.data(), bytes.size());
    }
    bool load(std::string file, char* message) { return glist_load(handle_, file.data(), message); }
    bool move(unsigned index, int delta) { return glist_move(handle_, index, delta); }
    bool set_length(unsigned length) { return glist_setlength(handle_, length); }
    void set_mark(int mark) { glist_set(handle_, 20, &mark); }
    void set_block_bytes(int bytes) { glist_set(handle_, 28, &bytes); }

    int mark() const { return number(20); }
    int length() const { return number(21); }

    // "(none)" if the list has no such record. Records are of at most 4095 bytes.
    std::string text(unsigned index) const {
        char buffer[4096];
        return glist_getstr(handle_, index, buffer) ? buffer : "(none)";
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (unsigned i = 0; i < static_cast<unsigned>(length()); ++i) all.push_back(text(i));
        return all;
    }

private:
    int number(int option) const {
        int value = -1;
        glist_query(handle_, option, &value);
        return value;
    }

    void* handle_ = nullptr;
};

// "0", "1", ...
inline std::vector<std::string> numbers(int count) {
    std::vector<std::string> texts;
    for (int i = 0; i < count; ++i) texts.push_back(std::to_string(i));
    return texts;
}

}  // namespace orvix::test
