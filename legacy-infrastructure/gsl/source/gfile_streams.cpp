#include <orvix/gsl/streams.h>

#include <orvix/core/path.h>
#include <orvix/core/streams.h>

#include <cerrno>
#include <climits>
#include <cstring>

bool gfile_putline(std::FILE* stream, bool add_new_line, const char* text) {
    if (text != nullptr && std::fputs(text, stream) == -1) return false;
    return !add_new_line || std::fputs("\n", stream) != -1;
}

bool gfile_getfilbuf(std::FILE* stream, std::size_t element_size, std::size_t count, char* buffer) {
    // A short count is no failure to the callers, who take what is left of a file.
    [[maybe_unused]] const std::size_t elements = std::fread(buffer, element_size, count, stream);
    return std::ferror(stream) == 0;
}

bool gfile_putfilbuf(std::FILE* stream, std::size_t element_size, std::size_t count, char* buffer) {
    std::fwrite(buffer, element_size, count, stream);
    return std::ferror(stream) == 0;
}

bool gfile_getfilchr(std::FILE* stream, char* out) {
    *out = static_cast<char>(std::fgetc(stream));
    // Both marks, not either: the plain end of a file is a success that stores 255.
    return std::ferror(stream) == 0 || std::feof(stream) == 0;
}

bool gfile_putfilchr(std::FILE* stream, char byte) {
    std::fputc(byte, stream);
    return std::ferror(stream) == 0;
}

bool gfile_getfilptr(std::FILE* stream, std::int32_t* out) {
    const std::int64_t position = orvix::core::position_of(stream);
    *out = position <= INT32_MAX ? static_cast<std::int32_t>(position) : -1;
    return *out != -1;
}

bool gfile_putfilptr(std::FILE* stream, std::int32_t position) { return std::fseek(stream, position, SEEK_SET) == 0; }

bool gfile_resetfilptr(std::FILE* stream) { return std::fseek(stream, 0, SEEK_SET) == 0; }

void gfile_fopen_status(void) {
    std::FILE* probe = std::tmpfile();
    if (probe == nullptr) {
        std::fputs("gfile: could not determine number of files opened, tmpfile() failed\n", stderr);
        return;
    }
    std::fprintf(stderr, "gfile: current number of files open = %d\n", gsl_fileno(probe));
    std::fclose(probe);
}

std::FILE* gsl_fopen(const char* name, const char* mode) {
    if (mode == nullptr) {
        errno = EINVAL;
        return nullptr;
    }
    return orvix::Path(name).fopen(mode);
}

int gsl_fclose(std::FILE* stream) { return stream != nullptr ? std::fclose(stream) : 0; }

char* gsl_fgets(char* buffer, int size, std::FILE* stream) { return std::fgets(buffer, size, stream); }

int gsl_fileno(std::FILE* stream) { return orvix::core::descriptor_of(stream); }

int gsl_getw(std::FILE* stream) {
    std::int32_t value;
    return std::fread(&value, sizeof value, 1, stream) == 1 ? value : -1;
}

int gsl_putw(int value, std::FILE* stream) {
    const std::int32_t word = value;
    return std::fwrite(&word, sizeof word, 1, stream) == 1 ? value : -1;
}

void agsl_bin_to_int16(TwoBytes record, short* out) {
    *out = static_cast<short>((record.bytes[0] << 8) | record.bytes[1]);
}

void agsl_int16_to_bin(short value, TwoBytes* out) {
    const auto bits = static_cast<std::uint16_t>(value);
    out->bytes[0] = static_cast<unsigned char>(bits >> 8);
    out->bytes[1] = static_cast<unsigned char>(bits);
}

void agsl_bin_to_int32(FourBytes record, int* out) {
    std::uint32_t bits = 0;
    for (const unsigned char byte : record.bytes) bits = (bits << 8) | byte;
    *out = static_cast<int>(bits);
}

void agsl_int32_to_bin(int value, FourBytes* out) {
    auto bits = static_cast<std::uint32_t>(value);
    for (int i = 3; i >= 0; --i) {
        out->bytes[i] = static_cast<unsigned char>(bits);
        bits >>= 8;
    }
}
