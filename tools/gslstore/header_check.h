// What is wrong with the header of a store file.
#pragma once

#include "store_format.h"

#include <cstdint>
#include <string>
#include <vector>

namespace gslstore {

// What a wrong field takes away from a reader.
enum class Loss : std::uint8_t {
    nothing,
    buckets_of_keys,  // in which bucket a key belongs
    pages,            // where pages lie
};

struct HeaderFault {
    std::uint32_t offset;  // of the field
    Loss loss;
    std::string text;
};

// Compares the fields with each other and with the size of the file. Nothing else is said of a file that is no store.
std::vector<HeaderFault> faults_of(const Header& header, std::uint64_t file_bytes);

// True if a fault takes this away.
bool is_lost(const std::vector<HeaderFault>& faults, Loss what);

}  // namespace gslstore
