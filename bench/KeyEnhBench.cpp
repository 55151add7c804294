// Transposition and key reading sit in the inner loops of chord naming and analysis.

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <vector>

#include "harmony/pitch/KeyEnh.h"

namespace {

using harmony::CKeyEnh;
using harmony::TEnh;

// Every key with every spelling, transposed by every interval -11..11: 12 * 8 * 23 calls.
void BM_TranposeThisAllKeysSpellingsIntervals(benchmark::State& state) {
  constexpr std::array<TEnh, 8> kSpellings = {
      harmony::TEnh_bbb, harmony::TEnh_bb, harmony::TEnh_b,   harmony::TEnh_n,
      harmony::TEnh_s,   harmony::TEnh_ss, harmony::TEnh_sss, harmony::TEnh_Undef};
  std::int64_t calls = 0;
  for (auto _ : state) {
    for (int key = 0; key < 12; ++key) {
      for (TEnh enh : kSpellings) {
        for (int intvl = -11; intvl <= 11; ++intvl) {
          CKeyEnh k(key, enh);
          k.TranposeThis(intvl);
          benchmark::DoNotOptimize(k);
        }
      }
    }
    calls += 12 * 8 * 23;
  }
  state.SetItemsProcessed(calls);
}
BENCHMARK(BM_TranposeThisAllKeysSpellingsIntervals);

void BM_SetFromString(benchmark::State& state) {
  const std::vector<std::string> texts = {"C",  "F#m7", "Bbb", "Bbb5",     "Cis",  "Ebmaj7",
                                          "H7", "  G",  "Ax",  "E\u266D7", "Db13", "X"};
  std::int64_t calls = 0;
  int consumed = 0;
  for (auto _ : state) {
    for (const std::string& text : texts) {
      CKeyEnh key;
      key.SetFromString(text, &consumed);
      benchmark::DoNotOptimize(key);
      benchmark::DoNotOptimize(consumed);
    }
    calls += static_cast<std::int64_t>(texts.size());
  }
  state.SetItemsProcessed(calls);
}
BENCHMARK(BM_SetFromString);

}  // namespace
