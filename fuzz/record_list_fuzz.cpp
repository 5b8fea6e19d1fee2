// A list goes through operations that the bytes spell, among them loads of a file, and stays what the model is.
#include "../tests/messages/record_list_model.h"
#include "../tests/support/line_reader_model.h"

#include <orvix/core/temporary_file.h>
#include <orvix/gsl/record_list.h>
#include <orvix/gsl/streams.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using orvix::test::LineReaderModel;
using orvix::test::RecordListModel;

void expect(bool condition) {
    if (!condition) std::abort();
}

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool is_empty() const { return size_ == 0; }

    unsigned below(unsigned bound) {
        if (size_ == 0) return 0;
        --size_;
        return *data_++ % bound;
    }

    std::string bytes(std::size_t most) {
        const std::size_t taken = std::min(most, size_);
        std::string text(data_, data_ + taken);
        data_ += taken;
        size_ -= taken;
        return text;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

class Lists {
public:
    Lists() { expect(glist_create(&list_, 0, nullptr, nullptr)); }
    ~Lists() { expect(glist_close(list_)); }
    Lists(const Lists&) = delete;
    Lists& operator=(const Lists&) = delete;

    void step(Input* input) {
        const unsigned operation = input->below(7);
        const unsigned index = input->below(static_cast<unsigned>(std::min<std::size_t>(model_.length() + 3, 250)));
        switch (operation) {
            case 0:
                set_length(input->below(130));
                break;
            case 1:
                move(index, static_cast<int>(input->below(80)) - 40);
                break;
            case 2:
                set_block(2 + input->below(6), static_cast<int>(input->below(8)));
                break;
            case 3:
                load(input->bytes(input->below(255) * 16));
                break;
            default:
                put(index, input->bytes(input->below(12)));
                break;
        }
    }

    void check() const {
        int value = -1;
        expect(glist_query(list_, 21, &value) && static_cast<std::size_t>(value) == model_.length());
        expect(glist_query(list_, 20, &value) && value == model_.mark);
        for (unsigned i = 0; i < model_.length(); ++i) check(i, model_.at(i));
    }

private:
    void set_length(unsigned length) {
        expect(glist_setlength(list_, length));
        model_.set_length(length);
    }

    void move(unsigned index, int delta) { expect(glist_move(list_, index, delta) == model_.move(index, delta)); }

    void set_block(std::size_t capacity, int rest) {
        int bytes = static_cast<int>(32 + 8 * (capacity - 2)) + rest;
        expect(glist_set(list_, 28, &bytes));
        model_.set_block_capacity(capacity);
    }

    void put(unsigned index, std::string bytes) {
        expect(glist_putrec(list_, index, bytes.data(), bytes.size()));
        model_.put(index, bytes.empty() ? RecordListModel::Record() : bytes);
    }

    void load(const std::string& bytes) {
        static const orvix::TemporaryFile file("record_list", "txt");
        std::FILE* stream = file.path().fopen("w");
        expect(stream != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size());
        std::fclose(stream);
        std::string name = file.path();
        char message[1024];
        expect(glist_load(list_, name.data(), message));

        LineReaderModel lines(bytes);
        unsigned count = 0;
        for (; auto line = lines.limited_line(1024); ++count) {
            std::ranges::replace(*line, '\t', ' ');
            model_.put(count, line->empty() ? RecordListModel::Record() : *line + '\0');
        }
        model_.mark = static_cast<int>(count);
    }

    void check(unsigned index, const RecordListModel::Record& record) const {
        char text[4096];
        expect(glist_getstr(list_, index, text));
        expect(text == std::string(record ? record->c_str() : ""));
        std::string bytes(record ? record->size() : 1, '?');
        std::size_t copied = 0;
        expect(glist_getrec(list_, index, bytes.data(), bytes.size(), &copied));
        expect(bytes.substr(0, copied) == record.value_or(""));
    }

    void* list_ = nullptr;
    RecordListModel model_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Lists lists;
    while (!input.is_empty()) {
        lists.step(&input);
        lists.check();
    }
    return 0;
}
