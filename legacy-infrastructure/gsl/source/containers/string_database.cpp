#include <orvix/gsl/string_database.h>

#include "containers/avl_walk.h"

#include <orvix/gsl/status.h>

#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace avl = orvix::gsl::avl;

namespace {

using Item = HXstringDBItem;
using ReleaseValue = void (*)(void*);

// Items are released without knowing their database, so the callback in force is the process's. Only removing and
// destroying put theirs in force. What adding replaces meets whatever is in force at that moment, and applications that
// keep track of their values rely on its being none.
constinit ReleaseValue release_in_force = nullptr;

class InForce {
public:
    explicit InForce(ReleaseValue release) : before_(std::exchange(release_in_force, release)) {}
    ~InForce() { release_in_force = before_; }
    InForce(const InForce&) = delete;
    InForce& operator=(const InForce&) = delete;

private:
    ReleaseValue before_;
};

int lower_case(char c) {
    const int byte = static_cast<unsigned char>(c);
    return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

// Keys often begin alike, so equal bytes are passed by before their case is looked at.
int compare_ignoring_case(const char* a, const char* b) {
    for (;; ++a, ++b) {
        if (*a == *b) {
            if (*a == '\0') return 0;
        } else if (const int way = lower_case(*a) - lower_case(*b); way != 0) {
            return way;
        }
    }
}

// All that belongs to a key is one block, so that a comparison finds it together. The key's bytes follow.
struct Entry {
    tree_s node;
    Item item;

    static Entry* of(tree_s* node) { return reinterpret_cast<Entry*>(node); }
    char* text() { return reinterpret_cast<char*>(this + 1); }
};
static_assert(std::is_standard_layout_v<Entry>);

// Null without memory for an item; throws if it is the copy of the key that finds no room.
Entry* new_entry(const char* key, void* value) {
    const std::size_t key_bytes = std::strlen(key) + 1;
    void* const block = gmem_ee_malloc(1, sizeof(Entry) + key_bytes);
    if (block == nullptr) {
        char* const item = gmem_ee_malloc(1, sizeof(Entry));
        char* const copy = item == nullptr ? nullptr : gmem_ee_malloc(1, key_bytes);
        gmem_ee_free(copy);
        gmem_ee_free(item);
        if (item != nullptr && copy == nullptr) throw std::bad_alloc();
        return nullptr;
    }
    auto* const entry = new (block) Entry;
    std::memcpy(entry->text(), key, key_bytes);
    entry->item = {entry->text(), value};
    entry->node.item = &entry->item;
    return entry;
}

void release(Entry* entry) {
    void* const value = entry->item.value;
    gmem_ee_free(reinterpret_cast<char*>(entry));
    if (value != nullptr && release_in_force != nullptr) release_in_force(value);
}

// Calls `use` with the order of `key` against nodes.
template <class Use>
auto with_order(const HXstringDB* db, const char* key, Use use) {
    if (db->ignore_case) return use([=](tree_s* node) { return compare_ignoring_case(key, Entry::of(node)->text()); });
    return use([=](tree_s* node) { return std::strcmp(key, Entry::of(node)->text()); });
}

// The node of a key or null, with the way to it if that is asked for. The text mostly lies on another line of the cache
// than the links, so both are fetched ahead.
template <class... Path>
tree_s* find_node(HXstringDB* db, const char* key, Path*... path) {
    return with_order(db, key, [=](auto order) { return avl::find<0, sizeof(Entry)>(db->root, order, path...); });
}

void** find(HXstringDB* db, const char* key) {
    if (key == nullptr) return nullptr;
    tree_s* const node = find_node(db, key);
    return node == nullptr ? nullptr : &Entry::of(node)->item.value;
}

bool add(HXstringDB* db, const char* key, void* value) {
    if (key == nullptr) return false;
    Entry* const entry = new_entry(key, value);
    if (entry == nullptr) return false;
    avl::Path path;
    tree_s* const old = find_node(db, key, &path);
    if (old == nullptr) {
        avl::attach(db->root, &path, &entry->node);
    } else {
        entry->node = {old->left, old->right, old->balance, &entry->item};
        path.replace(db->root, path.size() - 1, &entry->node);
        release(Entry::of(old));
    }
    return true;
}

bool remove(HXstringDB* db, const char* key) {
    if (key == nullptr) return false;
    avl::Path path;
    if (find_node(db, key, &path) != nullptr) {
        const InForce scope(db->release_value);
        release(Entry::of(avl::detach(db->root, &path, avl::Heir::node)));
    }
    return true;
}

bool foreach (HXstringDB* db, bool (*visit)(Item*, void*), void* user) {
    return avl::walk(db->root, [=](void* item) { return visit(static_cast<Item*>(item), user); });
}

void destroy(HXstringDB* db) {
    if (db == nullptr) return;
    // A callback may still come back with the record.
    db->add = [](HXstringDB*, const char*, void*) { return false; };
    db->destroy = [](HXstringDB*) {};
    const InForce scope(db->release_value);
    avl::dismantle(std::exchange(db->root, nullptr), [](tree_s* node) { release(Entry::of(node)); });
    gmem_ee_free(static_cast<char*>(static_cast<void*>(db)));
}

int height(HXstringDB* db) {
    int levels = 0;
    for (const tree_s* node = db->root; node != nullptr; ++levels) {
        node = node->balance < 0 ? node->left : node->right;
    }
    return levels;
}

using Printer = void (*)(void*, const char*, int, void*);

// As deep as the tree is high.
void print_below(const tree_s* node, int level, void* context, Printer printer) {
    for (; node != nullptr; node = node->right, ++level) {
        print_below(node->left, level + 1, context, printer);
        const Item* const item = static_cast<const Item*>(node->item);
        printer(context, item->key, level, item->value);
    }
}

void print(HXstringDB* db, void* context, Printer printer) { print_below(db->root, 1, context, printer); }

bool is_empty(HXstringDB* db) { return db->root == nullptr || db->root->item == nullptr; }

}  // namespace

HXstringDB* HXstringDB_new(void (*release_value)(void*), bool ignore_case) {
    void* const block = gmem_ee_calloc(1, sizeof(HXstringDB));
    if (block == nullptr) throw std::bad_alloc();
    auto* const db = new (block)
        HXstringDB{ignore_case, nullptr, find, add, remove, foreach, destroy, height, print, is_empty, release_value};
    avltree_init(&db->root);
    return db;
}
