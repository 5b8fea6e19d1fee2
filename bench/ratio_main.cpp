#include "ratio.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvix::bench {

namespace {

std::map<std::pair<std::string, std::string>, double>& bars() {
    static std::map<std::pair<std::string, std::string>, double> all;
    return all;
}

std::map<std::string, std::string>& versions() {
    static std::map<std::string, std::string> all;
    return all;
}

// Prints as the console reporter does, and keeps the medians.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred) failed_ = true;
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") keep(run);
        }
    }

    void Finalize() override {
        if (cases_.empty()) return;
        std::printf("\n%-36s %-24s %8s %8s\n", "case", "peer", "ratio", "bar");
        for (const auto& [name, times] : cases_) {
            const auto ours = times.find("ours");
            if (ours == times.end()) continue;
            for (const auto& [peer, time] : times) {
                if (peer != "ours") print(name, peer, ours->second / time);
            }
        }
    }

    bool failed() const { return failed_; }

private:
    void keep(const Run& run) {
        // Options such as "/iterations:1" follow the name proper.
        const std::string name =
            run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
        const std::size_t slash = name.rfind('/');
        if (slash != std::string::npos)
            cases_[name.substr(0, slash)][name.substr(slash + 1)] =
                run.run_name.time_type.empty() ? run.cpu_accumulated_time : run.real_accumulated_time;
    }

    static void print(const std::string& name, const std::string& peer, double ratio) {
        const auto version = versions().find(peer);
        const std::string shown = version == versions().end() ? peer : peer + " " + version->second;
        const auto limit = bars().find({name, peer});
        if (limit == bars().end()) {
            std::printf("%-36s %-24s %8.3f %8s\n", name.c_str(), shown.c_str(), ratio, "");
        } else {
            std::printf("%-36s %-24s %8.3f %8.2f %s\n", name.c_str(), shown.c_str(), ratio, limit->second,
                        ratio <= limit->second ? "" : "ABOVE");
        }
    }

    std::map<std::string, std::map<std::string, double>> cases_;
    bool failed_ = false;
};

}  // namespace

bool bar(const std::string& name, const std::string& peer, double limit) {
    bars()[{name, peer}] = limit;
    return true;
}

bool peer_version(const std::string& peer, const std::string& version) {
    versions()[peer] = version;
    return true;
}

}  // namespace orvix::bench

int main(int argc, char** argv) {
    std::vector<std::string> options{argv[0], "--benchmark_repetitions=9",
                                     "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.02",
                                     "--benchmark_report_aggregates_only=true"};
    for (int i = 1; i < argc; ++i) options.emplace_back(argv[i]);
    std::vector<char*> words;
    for (std::string& option : options) words.push_back(option.data());
    int count = static_cast<int>(words.size());
    benchmark::Initialize(&count, words.data());
    if (benchmark::ReportUnrecognizedArguments(count, words.data())) return 2;

    orvix::bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.failed() ? 1 : 0;
}
