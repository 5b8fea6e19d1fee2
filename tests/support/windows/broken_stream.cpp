#include "support/broken_stream.h"

#include "support/windows/imports.h"

#include <cstdio>

namespace orvix::test {

namespace {

// The end of a file is turned into an error of it.
std::size_t breaking_fread(void* buffer, std::size_t size, std::size_t count, std::FILE* stream) {
    static const auto read = reinterpret_cast<decltype(&std::fread)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), "fread")));
    const std::size_t elements = read(buffer, size, count, stream);
    if (std::feof(stream) != 0) stream->_flag = (stream->_flag & ~_IOEOF) | _IOERR;
    return elements;
}

}  // namespace

BrokenStream::BrokenStream(std::string bytes) : stream_(std::tmpfile()) {
    std::fwrite(bytes.data(), 1, bytes.size(), stream_);
    std::rewind(stream_);
    auto* scope = new ImportReplacement;
    scope->replace("fread", reinterpret_cast<void*>(breaking_fread));
    replacement_ = scope;
}

BrokenStream::~BrokenStream() {
    delete static_cast<ImportReplacement*>(replacement_);
    std::fclose(stream_);
}

}  // namespace orvix::test
