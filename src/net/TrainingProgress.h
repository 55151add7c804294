#pragma once
// The progress bookkeeping of batch training: after each cycle it tells whether the cycle's
// mean error would be saved. Nothing is saved; the message is all that remains of it.

#include <cmath>
#include <cstdint>
#include <limits>

namespace harmony {

// x truncated toward zero into 32 bits; NaN gives 0 and the ends of the range hold.
inline std::int32_t _TruncateToInt32(double x) {
  if (std::isnan(x)) return 0;
  if (x >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  if (x <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(x);
}

class _TrainingProgress {
 public:
  // True ("saved") when the cycle before wasn't saved and `mean` exceeds the last value; else
  // the last value becomes `mean` truncated, so later means compare with a whole number.
  bool Record(double mean) {
    if (!_saved && mean > _last) {
      _saved = true;
      return true;
    }
    _saved = false;
    _last = _TruncateToInt32(mean);
    return false;
  }
  std::int32_t LastValue() const { return _last; }

 private:
  bool _saved = false;
  std::int32_t _last = 0;
};

}  // namespace harmony
