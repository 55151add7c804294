#pragma once
// CSemitones: which of the twelve semitones above a root are present, as one word. Bit n is
// the tone n semitones above the root, so 145 is the major triad (0-4-7), 137 the minor
// triad, 2741 the major scale. Chords and scales carry it, and nearly every classification
// is a single mask test on it, which is why it stays a plain word without allocation.

#include <array>
#include <bit>
#include <compare>
#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/pitch/IntvlSet.h"

namespace harmony {

// Defined with their members in harmony/chords/BasicChord.h, included at the end.
enum TBasicChord : std::uint8_t;
enum TChordOption : std::uint8_t;

// Where a semitone that is not in the set goes.
enum TQuantizeDirection : std::int32_t {
  kQuantizeClosestTieRight = 0,  // the nearer neighbour; a tie goes up
  kQuantizeClosestTieLeft = 1,   // the nearer neighbour; a tie goes down
  kQuantizeRight = 2,
  kQuantizeLeft = 3,
};

// Whether a quantised interval is told as the plain difference of the two indices within the
// octave (wrap) or as the number of steps walked, which may cross the octave (no wrap).
enum TQuantizeWrapAtOctave : std::int32_t {
  _Quantize_WrapAtOctave_Yes = 0,
  _Quantize_WrapAtOctave_No = 1,
};

struct TQuantizeSemitonesOptions {
  TQuantizeDirection Direction = kQuantizeClosestTieRight;
  TQuantizeWrapAtOctave WrapAtOctave = _Quantize_WrapAtOctave_Yes;
};

class CSemitones : public TraceFamily<CSemitones> {
 public:
  static constexpr int kUndefIntvl = -129;
  static constexpr std::uint64_t kOctaveMask = 4095;

  constexpr CSemitones() = default;
  constexpr explicit CSemitones(std::uint64_t word) : _word(word) {}

  // The chord masks that the metronome chord recognition knows, per mode.
  static const std::array<CSemitones, 18> _sSemitones_Chords_CommonMode;
  static const std::array<CSemitones, 18> _sSemitones_Chords_MetroRecognizedMode;
  static const std::array<CSemitones, 4> _sSemitones_Chords_MajorMinorMode;

  // --- Construction and bits
  constexpr std::uint64_t Word() const { return _word; }
  constexpr void Reset() { _word = 0; }
  constexpr bool IsEmpty() const { return _word == 0; }
  constexpr unsigned long size() const { return static_cast<unsigned long>(std::popcount(_word)); }
  // True when every bit of `mask` is set (a mask, not an index).
  constexpr bool Contain(unsigned long mask) const { return (_word & mask) == mask; }
  // An index of 12 or more is ignored.
  constexpr void SetSemitone(unsigned long index, bool on) {
    if (index >= 12) return;
    const std::uint64_t bit = std::uint64_t{1} << index;
    _word = on ? (_word | bit) : (_word & ~bit);
  }
  // The bit at `index`; false for indices outside the word.
  constexpr bool Semitone(unsigned long index) const {
    return index < 64 && ((_word >> index) & 1U) != 0;
  }
  static std::uint64_t VectorBoolToInt(const std::vector<bool>& bits);
  // Twelve entries, all false, then set from the word when the word is at most 4096.
  void ToVectorBool(std::vector<bool>& bits) const;
  // The interval read as an unsigned 64-bit number, modulo 12. A negative interval therefore
  // folds by its two's-complement value: -1 gives 3, not 11. Callers rely on this.
  static constexpr unsigned long SemitoneIxFromIntvl(int intvl) {
    return static_cast<unsigned long>(static_cast<std::uint64_t>(static_cast<std::int64_t>(intvl)) %
                                      12);
  }

  // --- Intervals
  constexpr void AddIntvl(int intvl) { _word |= std::uint64_t{1} << SemitoneIxFromIntvl(intvl); }
  constexpr void EraseIntvl(int intvl) {
    _word &= ~(std::uint64_t{1} << SemitoneIxFromIntvl(intvl));
  }
  void AddIntvls(const CIntvlSet& intvls);
  void EraseIntvls(const CIntvlSet& intvls);
  void SetFromIntvlSet(const CIntvlSet& intvls);
  // The set bits as ascending intervals, with the wrap interval 12.
  CIntvlSet IntvlSet() const;
  // False for anything outside 0..11.
  constexpr bool HasIntvl(int intvl) const {
    return intvl >= 0 && intvl < 12 && Semitone(static_cast<unsigned long>(intvl));
  }
  bool HasTheseOrMoreIntvls(const CIntvlSet& intvls) const;
  bool HasExactlyTheseIntvls(const CIntvlSet& intvls) const;

  // --- Basic chords
  TBasicChord BasicChord() const;
  void SetFromBasicChord(TBasicChord basicChord);
  void AddSemitonesFromBasicChord(TBasicChord basicChord);
  CSemitones ExtractBasicChordSemitones() const;
  void EraseTensions();

  constexpr bool IsMajor() const { return (_word & 144) == 144; }
  constexpr bool IsMinor() const { return (_word & 152) == 136; }
  constexpr bool IsMajorOrAug() const { return (_word & 16) != 0; }
  constexpr bool IsMinorOrDim() const { return (_word & 24) == 8; }
  constexpr bool IsAug() const { return (_word & 400) == 272; }
  constexpr bool IsMajorb5() const { return (_word & 208) == 80; }
  constexpr bool IsDim() const { return (_word & 216) == 72; }
  constexpr bool IsSus4() const { return (_word & 184) == 160; }
  constexpr bool IsSus2() const { return (_word & 188) == 132; }
  constexpr bool IsDrone5() const { return (_word & 188) == 128; }

  // --- Scales: the seven church modes. Locrian (1387) is modal but neither major nor minor.
  constexpr bool IsModalScale() const {
    return IsModalScaleMajor() || IsModalScaleMinor() || _word == 1387;
  }
  constexpr bool IsModalScaleMajor() const {
    return _word == 1717 || _word == 2741 || _word == 2773;
  }
  constexpr bool IsModalScaleMinor() const {
    return _word == 1451 || _word == 1453 || _word == 1709;
  }
  // The interval of the degree (counted from 0, wrapping round the set); -129 when empty.
  int DegreeNrToIntvl(int degreeNr) const;
  // Makes the tone at `index` the new root; 12 or more does nothing.
  constexpr void RotateRootToIx(unsigned long index) {
    if (index >= 12) return;
    _word = ((_word >> index) | (_word << (12 - index))) & kOctaveMask;
  }

  // --- Chord options
  bool HasChordOption(TChordOption option) const;
  // Whether this set agrees with `other` in the option's tones, when `other` has any of them.
  bool IsMatchingChordOption(TChordOption option, const CSemitones& other) const;

  // --- Comparing
  bool HasSameSemitonesAtTheseIndicesTo(const std::vector<unsigned long>& indices,
                                        const CSemitones& other) const;
  bool HasSameOrLessSemitonesAtTheseIndicesTo(const std::vector<unsigned long>& indices,
                                              const CSemitones& other) const;
  constexpr unsigned long MatchingCountInOctaveTo(const CSemitones& other) const {
    return _Count(~(_word ^ other._word));
  }
  constexpr unsigned long MatchingCountForActiveInBothTo(const CSemitones& other) const {
    return _Count(_word & other._word);
  }
  constexpr unsigned long MismatchingCountInOctaveTo(const CSemitones& other) const {
    return _Count(_word ^ other._word);
  }
  constexpr unsigned long MismatchingCountForActiveInThisTo(const CSemitones& other) const {
    return _Count(_word & ~other._word);
  }
  constexpr unsigned long MismatchingCountForActiveInOtherTo(const CSemitones& other) const {
    return _Count(~_word & other._word);
  }
  // Tones of this set, absent in `other`, a semitone above a tone of `other`.
  constexpr unsigned long AvoidNotesCountTo(const CSemitones& other) const {
    return _Count(_word & ~other._word & _RotateUp(other._word, 1));
  }
  // Places where three semitones in a row are set, circularly; 12 for the chromatic set.
  constexpr unsigned long AdjacentHalfStepsCount() const {
    return _Count(_word & _RotateUp(_word, 11) & _RotateUp(_word, 10));
  }
  // Neighbouring ascending elements `intvl` apart; the step back to the root is not counted.
  unsigned long StepsWithIntvlCount(int intvl) const;

  // --- Operators: union, difference, and order by the word as an unsigned number.
  constexpr CSemitones& operator+=(const CSemitones& other) {
    _word |= other._word;
    return *this;
  }
  constexpr CSemitones& operator-=(const CSemitones& other) {
    _word &= ~other._word;
    return *this;
  }
  friend constexpr CSemitones operator+(CSemitones a, const CSemitones& b) { return a += b; }
  friend constexpr CSemitones operator-(CSemitones a, const CSemitones& b) { return a -= b; }
  friend constexpr bool operator==(const CSemitones& a, const CSemitones& b) {
    return a._word == b._word;
  }
  friend constexpr std::strong_ordering operator<=>(const CSemitones& a, const CSemitones& b) {
    return a._word <=> b._word;
  }

  // --- Quantisation
  // The interval from `index` to an active semitone; -129 when there is none.
  int QuantizeToActiveSemitonesAsIntvl(unsigned long index,
                                       TQuantizeSemitonesOptions options) const;
  // The active index that `index` goes to, with the interval told within the octave.
  unsigned long QuantizeToActiveSemitonwAsIndex(unsigned long index,
                                                TQuantizeDirection direction) const;
  // The steps of the quantisation, reachable for tests.
  int _Quantize_WrapAtOctave_No_IntvlRight(unsigned long index) const;
  int _Quantize_WrapAtOctave_No_IntvlLeft(unsigned long index) const;
  int _Quantize_WrapAtOctave_No_Closest(unsigned long index, TQuantizeDirection direction) const;
  // (interval, circular distance); (-129, 2147483647) when nothing is found.
  std::pair<int, int> _Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Right(unsigned long index) const;
  std::pair<int, int> _Quantize_WrapAtOctave_Yes_IntvlAndAbsDist_Left(unsigned long index) const;
  int _Quantize_WrapAtOctave_Yes_Closest(unsigned long index, TQuantizeDirection direction) const;

  // --- Text
  // "0-4-7"; "-" for the empty set.
  std::string GenericName() const;
  std::string DebugName() const { return {}; }
  // Twelve flags, bit 0 first: [1,0,0,0,1,0,0,1,0,0,0,0].
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  static constexpr unsigned long _Count(std::uint64_t bits) {
    return static_cast<unsigned long>(std::popcount(bits & kOctaveMask));
  }
  // Bit i of the result is bit (i - by) of `bits`, circularly within the octave.
  static constexpr std::uint64_t _RotateUp(std::uint64_t bits, unsigned by) {
    bits &= kOctaveMask;
    return ((bits << by) | (bits >> (12 - by))) & kOctaveMask;
  }

  std::uint64_t _word = 0;
};

static_assert(sizeof(CSemitones) == 8 && std::is_trivially_copyable_v<CSemitones>,
              "CSemitones is passed and compared as a plain word");

inline constexpr std::array<CSemitones, 18> CSemitones::_sSemitones_Chords_CommonMode{
    CSemitones(0),   CSemitones(4095), CSemitones(145),  CSemitones(137), CSemitones(657),
    CSemitones(649), CSemitones(1169), CSemitones(2193), CSemitones(149), CSemitones(1161),
    CSemitones(73),  CSemitones(585),  CSemitones(1097), CSemitones(273), CSemitones(1297),
    CSemitones(133), CSemitones(161),  CSemitones(129)};
inline constexpr std::array<CSemitones, 18> CSemitones::_sSemitones_Chords_MetroRecognizedMode{
    CSemitones(0),    CSemitones(4095), CSemitones(1),   CSemitones(145),  CSemitones(137),
    CSemitones(1169), CSemitones(2193), CSemitones(149), CSemitones(1161), CSemitones(2185),
    CSemitones(73),   CSemitones(585),  CSemitones(273), CSemitones(1297), CSemitones(133),
    CSemitones(161),  CSemitones(129),  CSemitones(1153)};
inline constexpr std::array<CSemitones, 4> CSemitones::_sSemitones_Chords_MajorMinorMode{
    CSemitones(0), CSemitones(4095), CSemitones(145), CSemitones(137)};

namespace Semitones {

// The localized name of a known scale mask ("Major (Ionian)" for 2741); empty otherwise.
const std::string& LocalizedNameForScale(const CSemitones& semitones);
std::string LocalizedNameForScalePlatformString(const CSemitones& semitones);
// Chords have no names at this level: always empty.
const std::string& LocalizedNameForChord(const CSemitones& semitones);
std::string LocalizedNameForChordPlatformString(const CSemitones& semitones);
// Every named scale mask with its localized name, built once on first use.
const std::map<std::uint64_t, std::string>& LocalizedScaleNames();

}  // namespace Semitones

}  // namespace harmony

#include "harmony/chords/BasicChord.h"
