// Keeps a stock of parts in a file. Each argument behind its name is a movement, such as "R0603-10k +500".
#include <orvix/gsl/hash_careful.h>
#include <orvix/gsl/hash_store.h>
#include <orvix/gsl/number_text.h>
#include <orvix/gsl/regular_expressions.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>

namespace {

int count_of(__db* stock, std::string part) {
    const DBT key{part.data(), part.size()};
    DBT value;
    int count = 0;
    if (stock->get(stock, &key, &value, 0) == 0) {
        gparse_astoint(std::string(static_cast<char*>(value.data), value.size).c_str(), &count);
    }
    return count;
}

bool set_count(__db* stock, std::string part, int count) {
    std::string text = std::to_string(count);
    const DBT key{part.data(), part.size()};
    const DBT value{text.data(), text.size()};
    return stock->put(stock, &key, &value, 0) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return EXIT_FAILURE;
    __db* const stock = hash_open(argv[1], O_RDWR | O_CREAT, 0666, nullptr);
    if (stock == nullptr) {
        std::perror(argv[1]);
        return EXIT_FAILURE;
    }
    orvix::gsl::hash_keep_every_pair(stock, true);

    bool done = true;
    __gsl_regexp* const movement = gsl_regcomp("^([A-Za-z0-9_-]+) ([+-][0-9]+)$");
    for (int i = 2; i < argc; ++i) {
        int change = 0;
        if (gsl_regexec(movement, argv[i]) != 1 || !gparse_astoint(movement->startp[2], &change)) {
            std::fprintf(stderr, "no movement: %s\n", argv[i]);
            done = false;
            continue;
        }
        const std::string part(movement->startp[1], movement->endp[1]);
        const int count = count_of(stock, part) + change;
        std::printf("%s: %d\n", part.c_str(), count);
        done = set_count(stock, part, count) && done;
    }
    std::free(movement);
    return stock->close(stock) == 0 && done ? EXIT_SUCCESS : EXIT_FAILURE;
}
