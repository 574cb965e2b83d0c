// The pure text routines over growing inputs: the time per call should grow
// with the length and no faster (Google Benchmark's complexity fit says which).
// Built natively, without sanitizers; run by scripts/bench.sh.
#include <benchmark/benchmark.h>

#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "fields/text/currency_formats.h"
#include "fields/text/currency_text.h"
#include "fields/text/date_text.h"
#include "fields/text/mask.h"
#include "fields/text/number_text.h"
#include "frame/method.h"
#include "strings/lstr.h"
#include "validate/text/dates.h"
#include "validate/text/range_parse.h"

using namespace fk;

namespace {

// A method string of about n bytes whose keyword comes last, so the search crosses all of it.
void MethodLookup(benchmark::State& state) {
    const auto n = static_cast<size_t>(state.range(0));
    std::string m;
    while (m.size() < n) m += "@MSG(Out of range)";
    m += "@RNG(1,100)";
    std::vector<char> method(m.begin(), m.end());
    method.resize(method.size() + 3, 0);
    std::vector<char> argument(method.size());
    for (auto _ : state) benchmark::DoNotOptimize(twGetMethodParam(method.data(), "@RNG", argument.data()));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(MethodLookup)->RangeMultiplier(4)->Range(16, 16384)->Complexity(benchmark::oN);

// Grouping of 1 to 12 integer digits with decimals: the work buffer bounds the text.
void Comma(benchmark::State& state) {
    const std::string digits = std::string(static_cast<size_t>(state.range(0)), '7') + ".25";
    char text[160];
    for (auto _ : state) {
        std::memcpy(text, digits.c_str(), digits.size() + 1);
        benchmark::DoNotOptimize(lstrcomma(text, ',', '.'));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Comma)->DenseRange(2, 12, 2)->Complexity(benchmark::oN);

// The typed text merged into a mask of n placeholders among literals.
void MaskMerge(benchmark::State& state) {
    const auto n = static_cast<size_t>(state.range(0));
    std::string mask, app(n, '5');
    for (size_t i = 0; i < n; ++i) mask += (i % 4 == 3) ? "-#" : "#";
    std::vector<char> screen(mask.size() * 2 + 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(twAppToScrMask(screen.data(), app.c_str(), mask.c_str(), 0, 0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(MaskMerge)->RangeMultiplier(2)->Range(8, 128)->Complexity(benchmark::oN);

void RealText(benchmark::State& state) {
    const double value = 1234567.891 * static_cast<double>(state.range(0));
    char out[160];
    for (auto _ : state) RealValueText(value, static_cast<int32_t>(state.range(0)), false, out, sizeof out);
}
BENCHMARK(RealText)->DenseRange(0, 8, 2);

void CurrencyText(benchmark::State& state) {
    const std::string text = std::string(static_cast<size_t>(state.range(0)), '9') + ",50";
    char out[160];
    for (auto _ : state) FormatCurrency(text.c_str(), g_currencyFormats[0], 0, out, sizeof out);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(CurrencyText)->DenseRange(2, 12, 2)->Complexity(benchmark::oN);

// A range list of n groups; the value falls in the last.
int32_t Compare(const char* a, const char* b) { return std::strcmp(a, b); }
void RangeParse(benchmark::State& state) {
    std::string ranges = "@RNG";
    for (int64_t i = 0; i < state.range(0); ++i)
        ranges += "(" + std::to_string(i * 10) + "," + std::to_string(i * 10 + 1) + ")";
    const int32_t value = static_cast<int32_t>((state.range(0) - 1) * 10);
    for (auto _ : state) benchmark::DoNotOptimize(RangeTest(1, &value, ranges.c_str(), Compare));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(RangeParse)->RangeMultiplier(4)->Range(1, 256)->Complexity(benchmark::oN);

void DateParse(benchmark::State& state) {
    static const char* const texts[] = {"1/2/99", "12/31/1999", "02/29/2000"};
    struct tm date {};
    for (auto _ : state) {
        twDateToTM(&date, texts[state.range(0)], state.range(0) == 0 ? 1 : 2);
        benchmark::DoNotOptimize(twIsDateValid(&date));
    }
}
BENCHMARK(DateParse)->DenseRange(0, 2);

}  // namespace

BENCHMARK_MAIN();
