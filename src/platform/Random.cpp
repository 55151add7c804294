#include "platform/Random.h"

#include <mutex>
#include <random>

namespace harmony::platform {
namespace {

struct SharedGenerator {
  std::mutex lock;
  std::mt19937 engine{std::random_device{}()};
};

SharedGenerator& Shared() {
  static SharedGenerator shared;
  return shared;
}

}  // namespace

std::uint32_t Random32() {
  SharedGenerator& shared = Shared();
  std::lock_guard<std::mutex> guard(shared.lock);
  return static_cast<std::uint32_t>(shared.engine());
}

void SeedRandom(std::uint32_t seed) {
  SharedGenerator& shared = Shared();
  std::lock_guard<std::mutex> guard(shared.lock);
  shared.engine.seed(seed);
}

}  // namespace harmony::platform
