#include "harmony/markov/MarkovHarmChords.h"

#include <map>

namespace harmony {

namespace {

constexpr std::int32_t kUnknownDist = -1;
constexpr std::int32_t kUndefDist = 15;

bool IsKnownDist(std::int32_t dist) { return dist != kUnknownDist && dist != kUndefDist; }

// Where an analysis chord came from: the same position, root, bass and tones.
bool SameInputChord(const CHarmAnlsChordWithPos& a, const CHarmAnlsChordWithPos& b) {
  return a.RootKeyEnh.KeyNr == b.RootKeyEnh.KeyNr && a.BassKeyEnh.KeyNr == b.BassKeyEnh.KeyNr &&
         a.Semitones == b.Semitones;
}

CKeyEnh KeyInCenter(std::int32_t dist, const CHarmCenterLite& center) {
  return CKeyEnh((center.RootKeyEnh.KeyNr + dist) % 12, center);
}

}  // namespace

void MarkovObjectsVectorForHarmChords(const CHarmAnlsChordsWithLength& chords,
                                      std::vector<CMarkovObject>& objects) {
  for (const CHarmAnlsChordWithLength& chord : chords) {
    if (!IsKnownDist(chord.RootDistToHarmCenter) && !IsKnownDist(chord.BassDistToHarmCenter)) {
      objects.push_back(CMarkovObject::Gap(chord.Length));
    } else {
      objects.push_back(CMarkovObject::FromChord(chord));
    }
  }
}

void HarmChordsWithLengthFromAnalysis(const CHarmAnlsChords& chords,
                                      const CHarmonicAnalyse& analyse,
                                      CHarmAnlsChordsWithLength& withLength) {
  withLength.clear();
  std::multimap<double, const CHarmAnlsChordWithPos*> analysed;
  double treeEnd = kHarmAnlsUndefDouble;
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      for (const CHarmAnlsChordWithPos& chord : center.HarmChords) {
        analysed.emplace(chord.Position, &chord);
        if (chord.IsUndef() && chord.Position > treeEnd) treeEnd = chord.Position;
      }
    }
  }
  for (std::size_t i = 0; i < chords.size(); ++i) {
    const CHarmAnlsChordWithPos& chord = chords[i];
    // A list may lack the closing chord (an import puts it into the tree only).
    const double end = i + 1 < chords.size() ? chords[i + 1].Position : treeEnd;
    const double length = end - chord.Position;
    if (IsHarmAnlsUndef(end) || !(length > 0.0)) continue;
    CHarmAnlsChordWithLength entry(chord.ChordLite(), length);
    const auto [first, last] = analysed.equal_range(chord.Position);
    for (auto it = first; it != last; ++it) {
      if (chord.IsUndef() || !SameInputChord(*it->second, chord)) continue;
      entry.RootDistToHarmCenter = it->second->RootDistToHarmCenter;
      entry.BassDistToHarmCenter = it->second->BassDistToHarmCenter;
      break;
    }
    withLength.push_back(entry);
  }
}

void HarmChordsWithLengthFromAnalysis(const CHarmonicAnalyse& analyse,
                                      CHarmAnlsChordsWithLength& withLength) {
  HarmChordsWithLengthFromAnalysis(analyse.InputChords(), analyse, withLength);
}

CHarmAnlsChordWithPos HarmChordForMarkovObject(const CMarkovObject& object,
                                               const CHarmCenterLite& center, double position) {
  const std::int32_t rootDist = object.Chord.RootDistToHarmCenter;
  const std::int32_t bassDist = object.Chord.BassDistToHarmCenter;
  if (!object.IsChord() || rootDist < 0 || rootDist > 11 || center.RootKeyEnh.IsUndef()) {
    return CHarmAnlsChordWithPos(CHarmAnlsChord_Undef, position);
  }
  const bool hasBass = bassDist >= 0 && bassDist <= 11;
  const CChordLite chord(KeyInCenter(rootDist, center), object.Chord.Semitones,
                         hasBass ? KeyInCenter(bassDist, center) : CKeyEnh());
  return CHarmAnlsChordWithPos(CHarmAnlsChord(chord, rootDist, hasBass ? bassDist : -1), position);
}

CHarmAnlsChords HarmChordsForMarkovObjects(const std::vector<CMarkovObject>& objects,
                                           const CHarmCenterLite& center) {
  CHarmAnlsChords chords;
  double position = 0.0;
  for (const CMarkovObject& object : objects) {
    if (!object.CountsForLength()) continue;
    chords.push_back(HarmChordForMarkovObject(object, center, position));
    position += object.Length();
  }
  chords.push_back(CHarmAnlsChordWithPos(CHarmAnlsChord_Undef, position));
  return chords;
}

}  // namespace harmony
