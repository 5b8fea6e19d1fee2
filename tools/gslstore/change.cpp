// The commands on keys and pairs, through the library.
#include "commands.h"
#include "pair_text.h"
#include "streams.h"

namespace gslstore {

namespace {

constexpr std::uint64_t most_complaints = 20;

std::string meant(const Options& options, const std::string& argument, const char* what) {
    if (!options.escapes) return argument;
    std::string bytes;
    if (const auto fault = read_escaped(argument, &bytes)) {
        throw Failure(what + std::string(", byte ") + std::to_string(fault->column) + ": " + fault->text);
    }
    return bytes;
}

std::string key_of(const Options& options) { return meant(options, options.key, "KEY"); }

std::string value_of(const Options& options) {
    return options.file ? Input(*options.file).read_all() : meant(options, *options.value, "VALUE");
}

Status tell(const Options& options, const char* what) {
    complain(options.store + ": " + what);
    return found_wanting;
}

std::string counted_lines(std::uint64_t lines) { return std::to_string(lines) + (lines == 1 ? " line" : " lines"); }

// The pairs of an input, line by line.
class LineOfPair {
public:
    explicit LineOfPair(Input* input) : input_(input) {}

    bool next() {
        if (!input_->read_line(&line_)) return false;
        constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
        if (++lines_ == 1 && line_.starts_with(byte_order_mark)) line_.erase(0, byte_order_mark.size());
        fault_ = read_pair(line_, &key_, &value_);
        return true;
    }
    std::uint64_t lines() const { return lines_; }
    std::string place() const { return input_->name() + ", line " + std::to_string(lines_); }
    const std::optional<TextFault>& fault() const { return fault_; }

    void put(Store* store, bool keep) const {
        try {
            store->put(key_, value_, keep);
        } catch (const Failure& failure) {
            throw Failure(place() + ": " + failure.what());
        }
    }

private:
    Input* input_;
    std::string line_;
    std::string key_;
    std::string value_;
    std::uint64_t lines_ = 0;
    std::optional<TextFault> fault_;
};

}  // namespace

Status get_value(const Options& options) {
    const std::string key = key_of(options);
    Store store = Store::open_to_read(options.store);
    const std::optional<std::string_view> value = store.get(key);
    if (!value) return tell(options, "the key is not there");
    if (options.raw) {
        print(*value);
        return well;
    }
    std::string line;
    append_escaped(&line, *value);
    print(line + "\n");
    return well;
}

Status put_pair(const Options& options) {
    const std::string key = key_of(options);
    const std::string value = value_of(options);
    Store store = Store::open_or_make(options.store, options.creation);
    const bool is_stored = store.put(key, value, options.keep);
    store.close();
    return is_stored ? well : tell(options, "the key is there already");
}

Status remove_pair(const Options& options) {
    const std::string key = key_of(options);
    Store store = Store::open_to_change(options.store);
    const bool was_there = store.remove(key);
    store.close();
    return was_there ? well : tell(options, "the key is not there");
}

// Lines that are wrong are left out, and all others stored.
Status load_pairs(const Options& options) {
    Input input(options.file.value_or("-"));
    Store store = options.make_new ? Store::make(options.store, options.creation)
                                   : Store::open_or_make(options.store, options.creation);
    LineOfPair pair(&input);
    std::uint64_t wrong = 0;
    while (pair.next()) {
        if (!pair.fault()) {
            pair.put(&store, options.keep);
        } else if (++wrong <= most_complaints) {
            complain(pair.place() + ", byte " + std::to_string(pair.fault()->column) + ": " + pair.fault()->text);
        }
    }
    store.close();
    if (wrong == 0) return well;
    throw Failure(input.name() + ": " + counted_lines(wrong) + " of " + std::to_string(pair.lines()) +
                  " left out; all others are stored");
}

}  // namespace gslstore
