#pragma once
// The process-wide source of uniformly distributed 32-bit numbers. It starts from a seed of
// std::random_device; tests and tools reseed it for runs that repeat exactly.

#include <cstdint>

namespace harmony::platform {

// The next number of the shared generator; safe to call from several threads.
std::uint32_t Random32();

// Restarts the shared generator from `seed`: the numbers that follow are the same every run.
void SeedRandom(std::uint32_t seed);

}  // namespace harmony::platform
