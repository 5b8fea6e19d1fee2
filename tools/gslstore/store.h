// A store that is opened through the library, with every pair kept.
#pragma once

#include <orvix/gsl/hash_store.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace gslstore {

// What a store that is made is given; 0 stands for the library's default.
struct Creation {
    std::uint32_t page_size = 0;
    std::uint32_t fill_factor = 0;
    std::uint32_t expected_count = 0;
    std::int32_t byte_order = 0;
};

// All members throw Failure where a store refuses.
class Store {
public:
    static Store open_to_read(const std::string& name);
    static Store open_to_change(const std::string& name);
    // Makes the store if it is not there.
    static Store open_or_make(const std::string& name, const Creation& creation);
    // Makes an empty store whatever there is.
    static Store make(const std::string& name, const Creation& creation);

    // Good until the next call; none if the key is absent.
    std::optional<std::string_view> get(std::string_view key);
    // False if the key is there and is to be kept.
    bool put(std::string_view key, std::string_view value, bool keep_existing);
    // False if the key is absent.
    bool remove(std::string_view key);
    // Writes what the file lacks. A store that is not closed so may lose its latest changes.
    void close();

private:
    struct Close {
        void operator()(__db* db) const { db->close(db); }
    };

    Store(const std::string& name, int flags, const Creation& creation);
    // True for 0, false for 1.
    bool done(int result) const;

    std::string name_;
    std::unique_ptr<__db, Close> db_;
};

}  // namespace gslstore
