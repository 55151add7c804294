#include "harmony/chords/Voicing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"

namespace harmony {

namespace {

// Where a chord tone goes above the root: `Near` within the octave, `Far` an octave up when
// the chord has any tone of `FarIfAnyOf`, which makes the tone a tension (a ninth over a
// third, a thirteenth over a seventh). The minor third (index 3) has its own rule.
struct TVoicedTone {
  int Near;
  int Far;
  std::uint64_t FarIfAnyOf;
};

constexpr std::uint64_t Bit(int intvl) { return std::uint64_t{1} << intvl; }
constexpr std::uint64_t kThirds = Bit(3) | Bit(4);
constexpr std::uint64_t kSevenths = Bit(10) | Bit(11);

constexpr std::array<TVoicedTone, 12> kVoicedTones{{
    {0, 0, 0},
    {13, 13, 0},  // the flat nine is always a ninth
    {2, 14, kThirds},
    {3, 15, 0},  // minor third or sharp nine: see IsSharpNine
    {4, 4, 0},
    {5, 17, kThirds},
    // The sharp eleven over a fifth lands on the eleven (17), not on 18: with an eleven and
    // a fifth beside it, the chord sounds one note at 17 for both.
    {6, 17, Bit(7)},
    {7, 7, 0},
    {8, 20, kSevenths},
    {9, 21, kSevenths},
    {10, 10, 0},
    {11, 11, 0},
}};

// Whether the chord's minor-third semitone is heard as a sharp nine. Beside a ninth and a
// minor seventh it is one only over a major third without an eleven (C7(9,#9)); otherwise a
// major third or an eleven makes it one.
bool IsSharpNine(const CSemitones& semitones) {
  const bool hasMajorThird = semitones.HasIntvl(4);
  const bool hasEleven = semitones.HasIntvl(5);
  if (semitones.HasIntvl(2) && semitones.HasIntvl(10)) return hasMajorThird && !hasEleven;
  return hasMajorThird || hasEleven;
}

int VoicedIntvl(const CSemitones& semitones, int intvl) {
  if (intvl == 3) return IsSharpNine(semitones) ? 15 : 3;
  const TVoicedTone& tone = kVoicedTones[static_cast<std::size_t>(intvl)];
  return (semitones.Word() & tone.FarIfAnyOf) != 0 ? tone.Far : tone.Near;
}

int KeyNrOfNoteNr(long noteNr) {
  if (IsUndefNoteNr(noteNr)) return kKeyNrUndef;
  return static_cast<int>(((noteNr % 12) + 12) % 12);
}

bool IsKeyNr(int keyNr) { return keyNr >= 0 && keyNr < 12; }

bool Contains(const std::vector<unsigned char>& notes, long noteNr) {
  return std::find(notes.begin(), notes.end(), noteNr) != notes.end();
}

long Distance(long noteNr, int targetNoteNr) { return std::labs(noteNr - targetNoteNr); }

// A top above the target comes down by octaves while that brings it nearer than the note
// below it already is.
void PullTopDown(std::vector<unsigned char>& notes, int targetNoteNr) {
  while (notes.size() >= 2) {
    const long highest = notes.back();
    const long below = notes[notes.size() - 2];
    if (highest <= targetNoteNr || highest - targetNoteNr <= Distance(below, targetNoteNr) ||
        highest < 52 || Contains(notes, highest - 12)) {
      return;
    }
    notes.back() = static_cast<unsigned char>(highest - 12);
    std::sort(notes.begin(), notes.end());
  }
}

// A top below the target: the lowest note goes up by octaves while it lands nearer the target
// than the top.
void PushBottomUp(std::vector<unsigned char>& notes, int targetNoteNr) {
  while (!notes.empty()) {
    const long raised = notes.front() + 12L;
    if (raised > 127 || Distance(raised, targetNoteNr) >= Distance(notes.back(), targetNoteNr) ||
        Contains(notes, raised)) {
      return;
    }
    notes.front() = static_cast<unsigned char>(raised);
    std::sort(notes.begin(), notes.end());
  }
}

// A bass key of 15 (or the unknown distance -1) takes the root's; without root, no bass.
void AddBassKeyToMidiNotes(int rootKeyNr, int bassKeyNr, std::vector<unsigned char>& notes) {
  if (!IsKeyNr(rootKeyNr)) return;
  if (!IsKeyNr(bassKeyNr)) bassKeyNr = rootKeyNr;
  const auto rootNote = std::find_if(notes.begin(), notes.end(),
                                     [rootKeyNr](unsigned char n) { return n % 12 == rootKeyNr; });
  const long octave = rootNote == notes.end() ? 0 : *rootNote / 12;
  long bass = bassKeyNr + 12 * (octave - 1);
  while (bass < 40) bass += 12;
  while (Contains(notes, bass)) bass += 12;
  if (bass <= 127) notes.push_back(static_cast<unsigned char>(bass));
}

}  // namespace

std::vector<unsigned char> CChordLite::VoicingNotesNrs(const TChordVoicingPrefs& prefs) const {
  if (IsUndef()) return {};
  const long root = ToCompingRangeNoteNr(RootKeyEnh.KeyNr);
  std::array<long, 14> notes{};
  std::size_t count = 0;
  if (HasBassNote()) {
    const int belowRoot = AbsKeyIntvlFromTo(BassKeyEnh.KeyNr, RootKeyEnh.KeyNr);
    notes[count++] = std::clamp(root - belowRoot, 0L, 127L);
  }
  if (prefs.AddRootOctaveBelow == 1) notes[count++] = root - 12;
  for (int intvl = 0; intvl < 12; ++intvl) {
    if (Semitones.HasIntvl(intvl)) notes[count++] = root + VoicedIntvl(Semitones, intvl);
  }
  const auto begin = notes.begin();
  std::sort(begin, begin + static_cast<std::ptrdiff_t>(count));
  const auto end = std::unique(begin, begin + static_cast<std::ptrdiff_t>(count));
  return std::vector<unsigned char>(begin, end);
}

long CChordLite::_QuantizeToSemitones(long noteNr, TQuantizeDirection direction,
                                      const CSemitones& semitones) const {
  if (IsUndef()) return noteNr;
  const int keyNr = KeyNrOfNoteNr(noteNr);
  if (keyNr == kKeyNrUndef) return kNoteNrUndef;
  const int intvl = AbsKeyIntvlFromTo(RootKeyEnh.KeyNr, keyNr);
  if (intvl == kIntvlUndef) return kNoteNrUndef;
  const auto index = static_cast<unsigned long>(intvl);
  // The target index within the octave, the index itself when nothing is active.
  const unsigned long target = semitones.QuantizeToActiveSemitonwAsIndex(index, direction);
  return noteNr + static_cast<long>(target) - intvl;
}

long CChordLite::QuantizeToChord(long noteNr, TQuantizeDirection direction) const {
  return _QuantizeToSemitones(noteNr, direction, Semitones);
}

long CChordLite::QuantizeToBasicChord(long noteNr, TQuantizeDirection direction) const {
  const TBasicChord basicChord = BasicChord();
  const CSemitones semitones =
      basicChord == kBasicChordNone ? Semitones : SemitonesForBasicChord(basicChord);
  return _QuantizeToSemitones(noteNr, direction, semitones);
}

long CChordHeavy::QuantizeToChord(long noteNr, TQuantizeDirection direction) const {
  CChordLite lite;
  lite.SetFromChordHeavy(*this);
  return lite.QuantizeToChord(noteNr, direction);
}

long CChordHeavy::QuantizeToBasicChord(long noteNr, TQuantizeDirection direction) const {
  CChordLite lite;
  lite.SetFromChordHeavy(*this);
  return lite.QuantizeToBasicChord(noteNr, direction);
}

void TransposeChordBasedOnPreviousChords(std::vector<unsigned char>& notes, int targetNoteNr) {
  std::sort(notes.begin(), notes.end());
  if (notes.empty()) return;
  const long highest = notes.back();
  if (highest > targetNoteNr) PullTopDown(notes, targetNoteNr);
  if (highest < targetNoteNr) PushBottomUp(notes, targetNoteNr);
  std::sort(notes.begin(), notes.end());
}

void CHarmAnlsChordWithLengthToMidiNotes(const CHarmAnlsChordWithLength& chord,
                                         std::vector<unsigned char>& notes, bool relative) {
  notes.clear();
  const int rootKeyNr = relative ? chord.RootDistToHarmCenter : chord.RootKeyEnh.KeyNr;
  if (!IsKeyNr(rootKeyNr)) return;
  for (int intvl = 0; intvl < 12; ++intvl) {
    if (chord.Semitones.HasIntvl(intvl))
      notes.push_back(static_cast<unsigned char>(48 + rootKeyNr + intvl));
  }
}

void AddBassNoteToMidiNotes(const CHarmAnlsChord& chord, std::vector<unsigned char>& notes,
                            bool relative) {
  const int rootKeyNr = relative ? chord.RootDistToHarmCenter : chord.RootKeyEnh.KeyNr;
  const int bassKeyNr = relative ? chord.BassDistToHarmCenter : chord.BassKeyEnh.KeyNr;
  AddBassKeyToMidiNotes(rootKeyNr, bassKeyNr, notes);
}

}  // namespace harmony
