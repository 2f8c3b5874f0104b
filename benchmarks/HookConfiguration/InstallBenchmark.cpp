// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// An installation in settings as large as they may be, beside reading and writing the same text
// with the parser library's own values. Run with --benchmark_counters_tabular=true; peakMiB is the
// most that the program had in memory so far, so run one benchmark at a time to compare it.

#include "Foundation/Json.h"
#include "HookConfiguration/FileSystem.h"
#include "HookConfiguration/HookInstaller.h"
#include "support/SettingsFile.h"

#include <benchmark/benchmark.h>
#include <boost/json/src.hpp> // The program links the parser alone; this measures the rest, too.
#include <string>
#include <sys/resource.h>

namespace notch {
namespace {

constexpr std::size_t fileBytes = 4 << 20;

// The disk is not what is measured.
class WithoutSync final : public FileSystem {
public:
    int fsync(int) const override { return 0; }
};

std::string filled(std::string text, const std::string& element, const std::string& tail)
{
    const auto open = text.size();
    while (text.size() + element.size() + tail.size() + 1 <= fileBytes)
        text += (text.size() == open ? "" : ",") + element;
    return text + tail;
}

std::string numbers()
{
    return filled(R"({"list":[)", "12345.67890123456789", "]}");
}

std::string nestedArrays()
{
    constexpr std::size_t depth = 500;
    return filled(R"({"list":)" + std::string(depth, '['), R"("twenty bytes of text")",
        std::string(depth, ']') + "}");
}

std::string foreignHooks()
{
    return filled(R"({"hooks":{"Stop":[)",
        R"({"matcher":"Write","hooks":[{"type":"command","command":"/usr/bin/true 0123456789"}]})",
        "]}}");
}

double peakMiB()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void install(benchmark::State& state, const std::string& text)
{
    const WithoutSync files;
    const HookInstaller installer(files);
    for (auto _ : state) {
        state.PauseTiming();
        const SettingsFile settings(text);
        state.ResumeTiming();
        installer.install(
            settings.url(), "/a/QuillMossNotch", "quillmoss", HookInstaller::InterceptBash::no);
        state.PauseTiming();
        state.counters["writtenMiB"] =
            static_cast<double>(std::filesystem::file_size(settings.url())) / (1 << 20);
        state.ResumeTiming();
    }
    state.counters["peakMiB"] = peakMiB();
}

void parseAndDump(benchmark::State& state, const std::string& text)
{
    for (auto _ : state) {
        boost::json::parse_options options;
        options.max_depth = 512;
        const auto value = boost::json::parse(text, {}, options);
        auto written = boost::json::serialize(value);
        benchmark::DoNotOptimize(written);
    }
    state.counters["peakMiB"] = peakMiB();
}

// The same with this program's own values, which keep numbers as they were written.
void readAndWrite(benchmark::State& state, const std::string& text)
{
    for (auto _ : state) {
        auto written = Json::parse(text)->pretty();
        benchmark::DoNotOptimize(written);
    }
    state.counters["peakMiB"] = peakMiB();
}

BENCHMARK_CAPTURE(parseAndDump, numbers, numbers())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readAndWrite, numbers, numbers())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(install, numbers, numbers())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parseAndDump, nested, nestedArrays())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readAndWrite, nested, nestedArrays())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(install, nested, nestedArrays())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parseAndDump, hooks, foreignHooks())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readAndWrite, hooks, foreignHooks())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(install, hooks, foreignHooks())->Unit(benchmark::kMillisecond);

} // namespace
} // namespace notch

BENCHMARK_MAIN();
