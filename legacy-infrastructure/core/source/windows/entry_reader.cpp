#include "windows/entry_reader.h"

#include "windows/attributes.h"
#include "windows/wide_name.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace orvix::core {

namespace {

constexpr std::size_t buffer_bytes = 65536;  // some 400 entries of usual length

}  // namespace

bool EntryReader::prepare() {
    // Memory of operator new is aligned as the records need it.
    buffer_.reset(new (std::nothrow) std::byte[buffer_bytes]);
    return buffer_ != nullptr;
}

bool EntryReader::fill(HANDLE directory) {
    if (at_end_ || buffer_ == nullptr) return false;
    has_record_ = GetFileInformationByHandleEx(directory, FileIdBothDirectoryInfo, buffer_.get(), buffer_bytes) != 0;
    position_ = 0;
    at_end_ = !has_record_;
    failed_ = at_end_ && GetLastError() != ERROR_NO_MORE_FILES;
    return has_record_;
}

bool EntryReader::take_record(HANDLE directory, std::string* name, FileKind* kind) {
    if (!has_record_ && !fill(directory)) return false;
    FILE_ID_BOTH_DIR_INFO record;
    const std::byte* start = buffer_.get() + position_;
    std::memcpy(&record, start, offsetof(FILE_ID_BOTH_DIR_INFO, FileName));
    std::wstring wide(record.FileNameLength / sizeof(wchar_t), L'\0');
    std::memcpy(wide.data(), start + offsetof(FILE_ID_BOTH_DIR_INFO, FileName), wide.size() * sizeof(wchar_t));
    *name = narrow(wide);
    *kind = kind_of(record.FileAttributes, record.EaSize);  // a reparse point has its tag there
    position_ += record.NextEntryOffset;
    has_record_ = record.NextEntryOffset != 0;
    return true;
}

bool EntryReader::next(HANDLE directory, const char** name, FileKind* kind) {
    if (!rest_.empty()) {
        name_ = std::move(rest_.back().first);
        *kind = rest_.back().second;
        rest_.pop_back();
    } else if (!take_record(directory, &name_, kind)) {
        return false;
    }
    *name = name_.c_str();
    return true;
}

void EntryReader::read_rest(HANDLE directory) {
    std::pair<std::string, FileKind> entry;
    while (take_record(directory, &entry.first, &entry.second)) rest_.push_back(entry);
    std::reverse(rest_.begin(), rest_.end());
}

}  // namespace orvix::core
