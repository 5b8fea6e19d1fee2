// How a compiled record lies in its block:
//
//   record | program | Plan | copy of the program | numbers of the steps by node | steps
//
// The program and its copy are filled up with zero bytes to a multiple of sixteen.
#pragma once

#include "text/regexp_step.h"

#include <orvix/gsl/regular_expressions.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orvix::gsl::text::regexp {

struct Plan;

// What the reserved bytes of a record hold. The seal is made of the record's address, so that neither a record made by
// hand nor a copy is taken for one of the compiler's.
class Reserved {
public:
    static Reserved read(const __gsl_regexp* record) {
        Reserved reserved;
        std::memcpy(&reserved.program_bytes_, record->reserved, sizeof program_bytes_);
        std::memcpy(&reserved.seal_, record->reserved + sizeof program_bytes_, sizeof seal_);
        return reserved;
    }

    static void write(__gsl_regexp* record, std::size_t program_bytes) {
        const auto size = static_cast<std::uint16_t>(program_bytes);
        const std::uint32_t seal = seal_of(record, size);
        std::memcpy(record->reserved, &size, sizeof size);
        std::memcpy(record->reserved + sizeof size, &seal, sizeof seal);
    }

    std::size_t program_bytes() const { return program_bytes_; }
    bool is_of_compiler(const __gsl_regexp* record) const { return seal_ == seal_of(record, program_bytes_); }

private:
    static std::uint32_t seal_of(const __gsl_regexp* record, std::uint16_t program_bytes) {
        constexpr std::uint64_t multiplier = 0x9e3779b97f4a7c15;  // spreads all bits over the upper half
        const std::uint64_t mixed = reinterpret_cast<std::uintptr_t>(record) + (std::uint64_t{program_bytes} << 48);
        return static_cast<std::uint32_t>((mixed * multiplier) >> 32);
    }

    std::uint16_t program_bytes_;
    std::uint32_t seal_;
};
static_assert(sizeof(std::uint16_t) + sizeof(std::uint32_t) == sizeof(__gsl_regexp::reserved));

class RecordBlock {
public:
    RecordBlock(__gsl_regexp* record, std::size_t program_bytes)
        : start_(reinterpret_cast<char*>(record)),
          padded_bytes_((program_bytes + 15) / 16 * 16),
          plan_offset_(aligned(offsetof(__gsl_regexp, program) + padded_bytes_)) {}

    std::size_t padded_bytes() const { return padded_bytes_; }

    Plan* plan() const { return at<Plan>(plan_offset_); }
    unsigned char* copy() const;
    std::uint16_t* numbers() const;
    Step* steps() const;
    std::size_t bytes(std::size_t steps) const;

private:
    template <class Content>
    Content* at(std::size_t offset) const {
        return static_cast<Content*>(static_cast<void*>(start_ + offset));
    }

    static constexpr std::size_t aligned(std::size_t offset) { return (offset + 7) / 8 * 8; }

    char* start_;
    std::size_t padded_bytes_;
    std::size_t plan_offset_;
};

}  // namespace orvix::gsl::text::regexp
