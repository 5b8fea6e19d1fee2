#include "messages/record.h"

#include <cassert>
#include <cstdlib>
#include <cstring>

namespace orvix::gsl {

namespace {

constexpr std::size_t unit = 8;
constexpr std::size_t batch_bytes = 4096;

// The word in front of a record.
class Head {
public:
    // A record with an allocation of its own.
    static Head alone(std::size_t bytes) { return Head(bytes); }

    // A text with the one zero byte at its end, in a batch, that many units from its start.
    static Head batched_text(std::size_t bytes, std::size_t units) { return Head(bytes | text_bit | units << 48); }

    static Head of(const char* record) {
        std::uint64_t word;
        std::memcpy(&word, record - sizeof word, sizeof word);
        return Head(word);
    }

    // Gives the record behind the head.
    char* write(char* place) const {
        std::memcpy(place, &word_, sizeof word_);
        return place + sizeof word_;
    }

    std::size_t bytes() const { return word_ & most_bytes; }
    bool is_text() const { return (word_ & text_bit) != 0; }
    bool is_alone() const { return batch_offset() == 0; }
    std::size_t batch_offset() const { return (word_ >> 48) * unit; }

    static constexpr std::uint64_t text_bit = std::uint64_t{1} << 47;
    static constexpr std::uint64_t most_bytes = text_bit - 1;  // beyond what any system has

private:
    explicit Head(std::uint64_t word) : word_(word) {}

    std::uint64_t word_;
};
static_assert(sizeof(Head) == unit);

// The count of users at the start of a batch: its records, and the maker that still adds to it.
std::uint64_t users_of(const char* batch) {
    std::uint64_t users;
    std::memcpy(&users, batch, sizeof users);
    return users;
}

void set_users(char* batch, std::uint64_t users) { std::memcpy(batch, &users, sizeof users); }

void add_user(char* batch) { set_users(batch, users_of(batch) + 1); }

void remove_user(char* batch) {
    const std::uint64_t users = users_of(batch);
    if (users == 1) {
        std::free(batch);
    } else {
        set_users(batch, users - 1);
    }
}

constexpr std::size_t whole_units(std::size_t bytes) { return (bytes + unit - 1) / unit * unit; }

}  // namespace

char* new_record(std::span<const char> bytes) {
    if (bytes.size() > Head::most_bytes) return nullptr;
    auto* block = static_cast<char*>(std::malloc(sizeof(Head) + bytes.size()));
    if (block == nullptr) return nullptr;
    char* record = Head::alone(bytes.size()).write(block);
    std::memcpy(record, bytes.data(), bytes.size());
    return record;
}

void free_record(char* record) {
    if (record == nullptr) return;
    char* const place = record - sizeof(Head);
    const Head head = Head::of(record);
    if (head.is_alone()) {
        std::free(place);
    } else {
        remove_user(place - head.batch_offset());
    }
}

std::span<const char> record_bytes(const char* record) {
    if (record == nullptr) return {};
    return {record, Head::of(record).bytes()};
}

std::span<const char> record_text(const char* record) {
    const std::span<const char> bytes = record_bytes(record);
    if (bytes.empty()) return bytes;
    if (Head::of(record).is_text()) return bytes.first(bytes.size() - 1);
    const void* zero = std::memchr(record, 0, bytes.size());
    return zero != nullptr ? bytes.first(static_cast<std::size_t>(static_cast<const char*>(zero) - record)) : bytes;
}

char* RecordBatch::new_record(std::span<const char> text) {
    assert(text.size() < 1024);
    const std::size_t wanted = whole_units(sizeof(Head) + text.size() + 1);
    if (batch_ == nullptr || batch_bytes - used_bytes_ < wanted) {
        leave();
        batch_ = static_cast<char*>(std::malloc(batch_bytes));
        if (batch_ == nullptr) return nullptr;
        set_users(batch_, 1);
        used_bytes_ = unit;
    }
    char* record = Head::batched_text(text.size() + 1, used_bytes_ / unit).write(batch_ + used_bytes_);
    std::memcpy(record, text.data(), text.size());
    record[text.size()] = '\0';
    used_bytes_ += wanted;
    add_user(batch_);
    return record;
}

void RecordBatch::leave() {
    if (batch_ != nullptr) remove_user(batch_);
    batch_ = nullptr;
}

}  // namespace orvix::gsl
