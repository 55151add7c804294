#include "harmony/guitar/GChHarmony.h"

#include <algorithm>
#include <climits>
#include <memory>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/guitar/GChBasicChord.h"
#include "harmony/pitch/TextUtil.h"

namespace harmony {

namespace {

constexpr TEnh kEnhOfType[] = {TEnh_n, TEnh_s, TEnh_b};

CChordNamePrefs GridNamePrefs(bool commaSeparated) {
  CChordNamePrefs prefs = GetCurrentChordNamePrefs();
  prefs.TensionStyle = 2;
  prefs.CompactNameParts = 0;
  prefs.NoSpaceAroundSlash = 0;
  if (commaSeparated) prefs.CommaSeparatedNameParts = 1;
  return prefs;
}

std::optional<std::string> NameOnRoot(const GChChord& chord, int rootKey, int enhType, int capo,
                                      bool commaSeparated) {
  if (rootKey < 0 || rootKey > 11) return std::nullopt;
  CChordHeavy heavy(CIntvlSet::kDefaultWrapIntvl);
  const TEnh enh = enhType >= 0 && enhType <= 2 ? kEnhOfType[enhType] : TEnh_Undef;
  // The root stands in the bass slot (octave -1); the sounding strings are the chord's notes.
  heavy.SetRootNote(CNote(rootKey, enh));
  for (int s = 0; s < chord.numberOfStrings(); ++s) {
    if (chord.isMutedForStringIndex(s)) continue;
    const int pitch = chord.pitchForStringIndex(s, capo);
    if (pitch < 0) continue;
    CNote note;
    note.SetNoteNrAndMakeSensefulEnhAssumingCMajor(std::clamp(pitch, 0, 127));
    heavy.AddNote(note);
  }
  return heavy.Name(GridNamePrefs(commaSeparated));
}

// A free record sounded on a tuning, as a grid of a library would be.
GChChord ChordOfDescr(const GChChordDescr& descr, const GChShortTuning& tuning) {
  auto basic = std::make_shared<GChBasicChord>(tuning);
  for (const GChChordElemDescr& elem : descr.elements) {
    basic->addChordElem(elem.fingerNumber, elem.absFretIndex, elem.coveredMinStr,
                        elem.coveredMaxStr, elem.fingerPointType);
  }
  basic->setIsMutedMask(descr.isMutedMask);
  basic->setRootNote(static_cast<int8_t>(descr.rootNote));
  basic->setBassNote(static_cast<int8_t>(descr.bassNote));
  return GChChord(basic, 0);
}

}  // namespace

std::optional<std::string> GChHarmonyStringFromChord(const GChChord& chord, int rootKey,
                                                     int enhType, int capodasterOffset) {
  return NameOnRoot(chord, rootKey, enhType, capodasterOffset, false);
}

std::optional<std::string> GChHarmonyCommaSeparatedStringFromChord(const GChChord& chord,
                                                                   int rootKey, int enhType,
                                                                   int capodasterOffset) {
  return NameOnRoot(chord, rootKey, enhType, capodasterOffset, true);
}

std::optional<std::string> GChHarmonyStringFromChordDescr(const GChChordDescr& chord,
                                                          const GChShortTuning& tuning,
                                                          int rootKey, int enhType,
                                                          int capodasterOffset) {
  return NameOnRoot(ChordOfDescr(chord, tuning), rootKey, enhType, capodasterOffset, false);
}

std::optional<std::string> GChHarmonyCommaSeparatedStringFromChordDescr(
    const GChChordDescr& chord, const GChShortTuning& tuning, int rootKey, int enhType,
    int capodasterOffset) {
  return NameOnRoot(ChordOfDescr(chord, tuning), rootKey, enhType, capodasterOffset, true);
}

// Names are compared by their characters, as a reader sees them: a flat or sharp sign is one
// character, though UTF-8 spends three bytes on it.
int GChProposedRootNoteFromChord(const GChChord& chord, int capodasterOffset) {
  int best = -1;
  std::size_t bestLength = static_cast<std::size_t>(INT_MAX);
  for (int root = 0; root < 12; ++root) {
    const auto name = GChHarmonyStringFromChord(chord, root, -1, capodasterOffset);
    if (!name) continue;
    const std::size_t length = _UTF8StringLength(*name);
    if (length < bestLength) {
      best = root;
      bestLength = length;
    }
  }
  return best;
}

int GChProposedRootNoteFromChordDescr(const GChChordDescr& chord, const GChShortTuning& tuning,
                                      int capodasterOffset) {
  return GChProposedRootNoteFromChord(ChordOfDescr(chord, tuning), capodasterOffset);
}

}  // namespace harmony
