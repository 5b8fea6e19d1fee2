// A plain model of a record list: blocks of vectors, and records as strings.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvix::test {

class RecordListModel {
public:
    using Record = std::optional<std::string>;

    std::size_t length() const {
        std::size_t sum = 0;
        for (const Block& block : blocks_) sum += block.records.size();
        return sum;
    }

    const Record& at(std::size_t index) const { return const_cast<RecordListModel*>(this)->record(place(index)); }

    // At least 2. Counts for blocks that are made from now on.
    void set_block_capacity(std::size_t records) { block_capacity_ = records; }

    void set_length(std::size_t length) {
        while (this->length() > length) {
            blocks_.back().records.pop_back();
            if (blocks_.back().records.empty()) blocks_.pop_back();
        }
        while (this->length() < length) {
            if (blocks_.empty() || blocks_.back().records.size() == blocks_.back().capacity) {
                blocks_.push_back({block_capacity_, {}});
            }
            blocks_.back().records.emplace_back();
        }
    }

    void put(std::size_t index, Record record) {
        if (index >= length()) set_length(index + 1);
        this->record(place(index)) = std::move(record);
    }

    bool move(std::size_t index, std::int64_t delta) {
        const std::size_t before = length();
        const auto target = static_cast<std::int64_t>(index) + delta;
        if (delta < 0 && (index >= before || target < 0)) return false;
        if (delta > 0 && index >= before) {
            set_length(static_cast<std::size_t>(target));
            return true;
        }
        if (delta > 0) open_gap(index, static_cast<std::size_t>(delta));
        if (delta < 0) close_gap(index, static_cast<std::size_t>(target));
        mark = static_cast<int>(length());
        return true;
    }

    int mark = 0;

private:
    struct Block {
        std::size_t capacity;
        std::vector<Record> records;
    };
    struct Place {
        std::size_t block;
        std::size_t slot;
    };

    Place place(std::size_t index) const {
        std::size_t block = 0;
        while (index >= blocks_[block].records.size()) index -= blocks_[block++].records.size();
        return {block, index};
    }

    Record& record(Place at) { return blocks_[at.block].records[at.slot]; }

    bool exists(Place at) const { return at.block < blocks_.size() && at.slot < blocks_[at.block].records.size(); }

    void open_gap(std::size_t index, std::size_t count) {
        const std::size_t before = length();
        set_length(before + count);
        for (std::size_t i = before; i-- > index;) {
            record(place(i + count)) = record(place(i));
            record(place(i)).reset();
        }
    }

    // One step down, which never stops at the last place of a block.
    void step(Place* at) const {
        if (at->block == blocks_.size()) return;
        if (++at->slot + 1 >= blocks_[at->block].capacity) *at = {at->block + 1, 0};
    }

    void close_gap(std::size_t index, std::size_t target) {
        const std::size_t before = length();
        Place to = place(target);
        Place from = place(index);
        for (std::size_t i = index; i < before; ++i, step(&to), step(&from)) {
            if (!exists(to)) continue;
            const bool met = to.block == from.block && to.slot == from.slot;
            record(to) = exists(from) && !met ? record(from) : Record();
            if (exists(from)) record(from).reset();
        }
        set_length(before - (index - target));
    }

    std::vector<Block> blocks_;
    std::size_t block_capacity_ = 30;
};

}  // namespace orvix::test
