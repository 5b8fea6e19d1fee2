// A message from a set in memory beside a gettext lookup in a loaded catalogue: the same 1,000 texts, fetched in the
// order of the file and in random order.

#include "ratio.h"

#include <orvix/gsl/environment.h>
#include <orvix/gsl/messages.h>

#include <benchmark/benchmark.h>

#include <gnu/libc-version.h>
#include <libintl.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const bool bars = orvix::bench::bar("retrieve/random", "gettext", 0.50) &&
                  orvix::bench::bar("retrieve/in_order", "gettext", 0.50) &&
                  orvix::bench::peer_version("gettext", gnu_get_libc_version());

constexpr int message_count = 1000;

std::string identifier(int line) { return "GENERAL_" + std::to_string(line); }

std::string text(int line) {
    return "Cannot route net " + std::to_string(line) + " on layer " + std::to_string(line % 12) + ".";
}

// A message set and a catalogue of the same texts, in memory; gone at the end of the program.
class Catalogues {
public:
    Catalogues() : directory_(fs::path("/dev/shm") / ("orvix_msg_bench_" + std::to_string(std::random_device()()))) {
        fs::create_directories(directory_ / "config");
        fs::create_directories(directory_ / "xx/LC_MESSAGES");
        write_set();
        write_catalogue();
    }
    ~Catalogues() {
        gmsg_close(handle_);
        fs::remove_all(directory_);
    }
    Catalogues(const Catalogues&) = delete;
    Catalogues& operator=(const Catalogues&) = delete;

    GmsgHandleS* handle() const { return handle_; }

private:
    void write_set() {
        const std::string root = "C:" + directory_.string();
        std::ofstream(directory_ / "config/hxorvixsess.cfg") << "HXORVIX_MSG_FILE=" << root << "/sets\n";
        std::ofstream(directory_ / "sets") << "GENERAL=" << root << "/general\n";
        std::ofstream lines(directory_ / "general.eng");
        for (int line = 1; line <= message_count; ++line) lines << text(line) << '\n';
        lines.close();
        setenv("HXORVIX_DIR", root.c_str(), 1);
        handle_ = gmsg_open(nullptr, nullptr, nullptr);
        if (!gmsg_check_index(handle_, "GENERAL", message_count)) throw std::runtime_error("no message set");
    }

    void write_catalogue() {
        std::ofstream source(directory_ / "bench.po");
        source << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n";
        for (int line = 1; line <= message_count; ++line) {
            source << "\nmsgid \"" << identifier(line) << "\"\nmsgstr \"" << text(line) << "\"\n";
        }
        source.close();
        const std::string command =
            "msgfmt -o " + (directory_ / "xx/LC_MESSAGES/bench.mo").string() + " " + (directory_ / "bench.po").string();
        if (std::system(command.c_str()) != 0) throw std::runtime_error("msgfmt is missing");
        setenv("LANGUAGE", "xx", 1);
        std::setlocale(LC_ALL, "C.UTF-8");
        bindtextdomain("bench", directory_.c_str());
        if (dgettext("bench", identifier(1).c_str()) != text(1)) throw std::runtime_error("no catalogue");
    }

    fs::path directory_;
    GmsgHandleS* handle_ = nullptr;
};

const Catalogues& catalogues() {
    static const Catalogues both;
    return both;
}

std::vector<int> lines_in(bool random_order) {
    std::vector<int> lines(message_count);
    std::iota(lines.begin(), lines.end(), 1);
    if (random_order) std::shuffle(lines.begin(), lines.end(), std::mt19937(1));
    return lines;
}

void retrieve_ours(benchmark::State& state, bool random_order) {
    GmsgHandleS* handle = catalogues().handle();
    const std::vector<int> lines = lines_in(random_order);
    char out[1024];
    for (auto _ : state) {
        for (const int line : lines) {
            if (!gmsg_retrieve_message(handle, "GENERAL", line, out)) state.SkipWithError("no message");
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * message_count);
}
BENCHMARK_CAPTURE(retrieve_ours, in_order, false)->Name("retrieve/in_order/ours");
BENCHMARK_CAPTURE(retrieve_ours, random, true)->Name("retrieve/random/ours");

void retrieve_peer(benchmark::State& state, bool random_order) {
    catalogues();
    std::vector<std::string> identifiers;
    for (const int line : lines_in(random_order)) identifiers.push_back(identifier(line));
    char out[1024];
    for (auto _ : state) {
        for (const std::string& name : identifiers) {
            std::strcpy(out, dgettext("bench", name.c_str()));
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * message_count);
}
BENCHMARK_CAPTURE(retrieve_peer, in_order, false)->Name("retrieve/in_order/gettext");
BENCHMARK_CAPTURE(retrieve_peer, random, true)->Name("retrieve/random/gettext");

}  // namespace
