// Runs the benchmarks and, behind the usual table, prints the ratios that matter.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>

namespace {

struct Ratio {
    const char* what;
    const char* measured;
    const char* against;
};
constexpr Ratio ratios[] = {
    {"GetEvents over 1,000 events against the raw loop", "getEvents/1000", "rawLoop/1000"},
    {"GetEvents over 10,000 events against the raw loop", "getEvents/10000", "rawLoop/10000"},
    {"GetEvents over 100,000 events against the raw loop", "getEvents/100000", "rawLoop/100000"},
    {"GetEventParticipants over 10,000 with their groups against the raw loop",
     "getParticipants/10000", "rawParticipants/10000"},
    {"AddEventParticipants of 10,000 against the same statements sent raw", "addParticipants/10000",
     "rawStatements/10000"},
    {"adding 100,000 unsaved items against keyed ones", "addItems/unsaved/100000",
     "addItems/keyed/100000"},
};

/// The console's table, and the median of each benchmark for the ratios.
class Medians : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const auto& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
                times_[run.run_name.function_name + "/" + run.run_name.args] =
                    run.GetAdjustedRealTime();
            }
        }
    }
    void printRatios() const
    {
        for (const auto& ratio : ratios) {
            const auto measured = times_.find(ratio.measured);
            const auto against = times_.find(ratio.against);
            if (measured == times_.end() || against == times_.end()) continue;
            std::printf("%6.2f  %s\n", measured->second / against->second, ratio.what);
        }
    }

private:
    std::map<std::string, double> times_;
};

} // namespace

int main(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=5";
    std::string aggregates = "--benchmark_report_aggregates_only=true";
    arguments.insert(arguments.begin() + 1, {repetitions.data(), aggregates.data()});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    medians.printRatios();
    return 0;
}
