#include "harmony/pitch/KeyNumbers.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

namespace harmony {

namespace {

// The lowest note of the range in which accompaniment chords are voiced (F below middle C).
constexpr long kCompingRangeFloorNoteNr = 53;

constexpr std::array<bool, 12> kBlackKeys = {false, true,  false, true,  false, false,
                                             true,  false, true,  false, true,  false};

bool IsUndefNoteNrForIntvl(long noteNr) { return IsUndefNoteNr(noteNr) || noteNr == LONG_MIN; }

// The difference of two note numbers, wrapped into int without signed overflow.
int NoteNrDifference(long from, long to) {
  const auto diff = static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from);
  return static_cast<int>(static_cast<std::int32_t>(static_cast<std::uint32_t>(diff)));
}

long FloorMod12(long v) {
  const long r = v % 12;
  return r < 0 ? r + 12 : r;
}

// Note numbers far outside 0..127 clamp to the same result as these, without overflow.
long ClampForSearch(long noteNr) { return std::clamp(noteNr, -24L, 151L); }

}  // namespace

bool IsBlackKey(int keyNr) {
  const int r = keyNr % 12;
  return r >= 0 && kBlackKeys[r];
}

bool IsWhiteKey(int keyNr) { return !IsBlackKey(keyNr); }

int IntvlFromTo(long fromNoteNr, long toNoteNr) {
  if (IsUndefNoteNrForIntvl(fromNoteNr) || IsUndefNoteNrForIntvl(toNoteNr)) return kIntvlUndef;
  return NoteNrDifference(fromNoteNr, toNoteNr);
}

int IntvlFromToTolerateNoteNrSmallUndef(long fromNoteNr, long toNoteNr) {
  if (fromNoteNr == kNoteNrUndef || toNoteNr == kNoteNrUndef) return kIntvlUndef;
  return NoteNrDifference(fromNoteNr, toNoteNr);
}

int KeyIntvlFromTo(int fromKeyNr, int toKeyNr) {
  if (fromKeyNr == kKeyNrUndef || toKeyNr == kKeyNrUndef) return kIntvlUndef;
  return toKeyNr - fromKeyNr;
}

int AbsKeyIntvlFromTo(int fromKeyNr, int toKeyNr) {
  const int intvl = KeyIntvlFromTo(fromKeyNr, toKeyNr);
  if (intvl == kIntvlUndef) return kIntvlUndef;
  return static_cast<int>(FloorMod12(intvl));
}

int SmallestKeyIntvl(int intvl) {
  if (intvl == kIntvlUndef) return kIntvlUndef;
  if (intvl >= 6) return intvl - 12;
  if (intvl < -6) return intvl + 12;
  return intvl;
}

int SmallestKeyIntvlBetween(int fromKeyNr, int toKeyNr) {
  return SmallestKeyIntvl(KeyIntvlFromTo(fromKeyNr, toKeyNr));
}

int KeyDistanceBetween(int keyNr1, int keyNr2) {
  const int intvl = KeyIntvlFromTo(keyNr1, keyNr2);
  if (intvl == kIntvlUndef) return kIntvlUndef;
  const int d = std::abs(intvl);
  return d < 7 ? d : 12 - d;
}

int KeyDirectionFrom(long fromNoteNr, long toNoteNr) {
  if (IsUndefNoteNr(fromNoteNr) || IsUndefNoteNr(toNoteNr)) return 0;
  return toNoteNr < fromNoteNr ? 2 : 1;
}

long NoteNrOfKeyNrLargerOrEqualTo(int keyNr, long noteNr) {
  if (keyNr == kKeyNrUndef || IsUndefNoteNr(noteNr)) return kNoteNrUndef;
  const long n = ClampForSearch(noteNr);
  const long up = FloorMod12(NormalizedKeyNr(keyNr) - FloorMod12(n));
  return std::clamp(n + up, 0L, 127L);
}

long NoteNrOfKeyNrLargerThan(int keyNr, long noteNr) {
  const long result = NoteNrOfKeyNrLargerOrEqualTo(keyNr, noteNr);
  return result != kNoteNrUndef && result == noteNr ? noteNr + 12 : result;
}

long NoteNrOfKeyNrSmallerOrEqualTo(int keyNr, long noteNr) {
  if (keyNr == kKeyNrUndef || IsUndefNoteNr(noteNr)) return kNoteNrUndef;
  const long n = ClampForSearch(noteNr);
  const long down = FloorMod12(FloorMod12(n) - NormalizedKeyNr(keyNr));
  return std::clamp(n - down, 0L, 127L);
}

long NoteNrOfKeyNrSmallerThan(int keyNr, long noteNr) {
  const long result = NoteNrOfKeyNrSmallerOrEqualTo(keyNr, noteNr);
  return result != kNoteNrUndef && result == noteNr ? noteNr - 12 : result;
}

long NoteNrWithSameKeyNrLargerOrEqualTo(long noteNr, long limitNoteNr) {
  if (IsUndefNoteNr(noteNr)) return kNoteNrUndef;
  return NoteNrOfKeyNrLargerOrEqualTo(static_cast<int>(FloorMod12(noteNr)), limitNoteNr);
}

long NoteNrWithSameKeyNrLargerThan(long noteNr, long limitNoteNr) {
  if (IsUndefNoteNr(noteNr)) return kNoteNrUndef;
  return NoteNrOfKeyNrLargerThan(static_cast<int>(FloorMod12(noteNr)), limitNoteNr);
}

long KeyNrAddIntvlToCompingPlusWrapIntvlRange(int keyNr, int intvl, int wrapIntvl) {
  if (keyNr == kKeyNrUndef || intvl == kIntvlUndef || wrapIntvl == kIntvlUndef) {
    return kNoteNrUndef;
  }
  if (wrapIntvl <= 0) return kNoteNrUndef;
  long v = static_cast<long>(keyNr) + intvl;
  const long ceiling = kCompingRangeFloorNoteNr + wrapIntvl;
  if (v < kCompingRangeFloorNoteNr) {
    v += (kCompingRangeFloorNoteNr - v + wrapIntvl - 1) / wrapIntvl * wrapIntvl;
  } else if (v > ceiling) {
    v -= (v - ceiling + wrapIntvl - 1) / wrapIntvl * wrapIntvl;
  }
  return v;
}

}  // namespace harmony
