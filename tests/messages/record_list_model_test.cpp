// Long random runs against the model.

#include "messages/record_list_model.h"
#include "messages/list.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using orvix::test::List;
using orvix::test::RecordListModel;

std::string bytes_of(const List& list, unsigned index, std::size_t size) {
    std::string bytes(size, '?');
    std::size_t copied = 0;
    EXPECT_TRUE(glist_getrec(list.handle(), index, bytes.data(), size, &copied));
    return bytes.substr(0, copied);
}

void expect_same(const List& list, const RecordListModel& model) {
    ASSERT_EQ(static_cast<std::size_t>(list.length()), model.length());
    ASSERT_EQ(list.mark(), model.mark);
    for (unsigned i = 0; i < model.length(); ++i) {
        const RecordListModel::Record& record = model.at(i);
        ASSERT_EQ(list.text(i), record ? record->c_str() : "") << i;
        ASSERT_EQ(bytes_of(list, i, record ? record->size() : 1), record.value_or("")) << i;
    }
}

class RandomRun {
public:
    explicit RandomRun(unsigned seed) : random_(seed) {}

    void step() {
        const auto length = static_cast<unsigned>(model_.length());
        const unsigned index = below(length + 3);
        switch (below(8)) {
            case 0: {
                const unsigned wanted = below(130);
                ASSERT_TRUE(list_.set_length(wanted));
                model_.set_length(wanted);
                break;
            }
            case 1: {
                const int delta = static_cast<int>(below(80)) - 40;
                ASSERT_EQ(list_.move(index, delta), model_.move(index, delta)) << index << " by " << delta;
                break;
            }
            case 2: {
                const std::size_t capacity = below(2) == 0 ? 30 : 2 + below(6);
                list_.set_block_bytes(static_cast<int>(32 + 8 * (capacity - 2) + below(8)));
                model_.set_block_capacity(capacity);
                break;
            }
            case 3: {
                const std::string bytes = some_bytes();
                ASSERT_TRUE(list_.put_bytes(index, bytes));
                model_.put(index, bytes.empty() ? RecordListModel::Record() : bytes);
                break;
            }
            default: {
                const std::string text = std::to_string(random_());
                ASSERT_TRUE(list_.put(index, text));
                model_.put(index, text + '\0');
                break;
            }
        }
    }

    void expect_same() const { ::expect_same(list_, model_); }

private:
    unsigned below(unsigned bound) { return static_cast<unsigned>(random_() % bound); }

    std::string some_bytes() {
        std::string bytes(below(20), ' ');
        for (char& byte : bytes) byte = static_cast<char>(below(4) * 60);
        return bytes;
    }

    std::mt19937 random_;
    List list_;
    RecordListModel model_;
};

TEST(RecordListModel, RandomOperationsGiveTheModelsRecords) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomRun run(seed);
        for (int i = 0; i < 150; ++i) {
            ASSERT_NO_FATAL_FAILURE(run.step());
            ASSERT_NO_FATAL_FAILURE(run.expect_same());
        }
    }
}

}  // namespace
