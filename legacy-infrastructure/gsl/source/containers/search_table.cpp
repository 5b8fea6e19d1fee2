#include <orvix/gsl/search_table.h>

#include "containers/hash/table.h"

#include <orvix/core/open_flags.h>
#include <orvix/gsl/hash_store.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

namespace orvix::gsl {

namespace {

constinit __db* table = nullptr;
constinit entry found = {};

DBT text(char* bytes) { return {bytes, std::strlen(bytes) + 1}; }

}  // namespace

std::int64_t hcreate(std::uint32_t expected_count) {
    constexpr int owner_may_read_and_write = 0600;
    HASHINFO info{};
    info.page_size = 256;
    info.fill_factor = 8;
    info.expected_count = expected_count;
    const core::OpenFlags system = core::open_flags();
    table =
        hash::open_store(nullptr, system.read_write | system.create | system.binary, owner_may_read_and_write, &info);
    return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(table));
}

entry* hsearch(entry item, ACTIONSEARCH action) {
    if (table == nullptr) return nullptr;
    if (item.key == nullptr || (action == ENTER && item.data == nullptr)) {
        errno = EINVAL;
        return nullptr;
    }
    const DBT key = text(item.key);
    if (action == ENTER) {
        const DBT value = text(item.data);
        if (table->put(table, &key, &value, hash_keep_existing) != 0) return nullptr;
    } else {
        DBT value;
        if (table->get(table, &key, &value, 0) != 0) return nullptr;
        item.data = static_cast<char*>(value.data);
    }
    found = item;
    return &found;
}

void hdestroy() {
    if (table == nullptr) return;
    __db* const destroyed = std::exchange(table, nullptr);
    destroyed->close(destroyed);
}

}  // namespace orvix::gsl
