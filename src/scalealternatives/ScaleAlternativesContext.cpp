#include "harmony/scalealternatives/ScaleAlternativesContext.h"

#include <array>

namespace harmony {

namespace {

using TChordContext = CScaleAlternativesChordContext;
using TContext = CScaleAlternativesContext;

// The root's distance above `other`'s root, 0..11; -1 when either root is undefined.
int RootIntvlAbove(const TChordContext& a, const TChordContext& b) {
  if (!a.Exists() || !b.Exists()) return -1;
  return NormalizedKeyNr(a.Chord.RootKeyEnh.KeyNr - b.Chord.RootKeyEnh.KeyNr);
}

bool IsMajor(const TChordContext& chord) { return chord.BasicChord == kBasicChordMajor; }
bool IsMinor(const TChordContext& chord) { return chord.BasicChord == kBasicChordMinor; }
bool IsSus(const TChordContext& chord) {
  return chord.BasicChord == kBasicChordSus4 || chord.BasicChord == kBasicChordSus2;
}

// Mixolydian, Lydian and major: the scales in which the borrowed chords of a major key stand
// out as such.
bool IsMajorTypeScale(const CScaleLite& scale) { return scale.Semitones.IsModalScaleMajor(); }

bool SameCenter(const TChordContext& a, const TChordContext& b) {
  return a.HarmCenter.RootKeyEnh == b.HarmCenter.RootKeyEnh &&
         a.HarmCenter.Semitones == b.HarmCenter.Semitones;
}

// The borrowed chords of a major key, tried in this order once the chord is neither diatonic,
// a Neapolitan, a flat six before a flat seven, nor a sus chord held into its resolution.
int BorrowedChordCase(const TContext& context) {
  const TChordContext& chord = context.CurrentChord;
  const TChordContext& previous = context.PreviousChord;
  const int degree = chord.Degree;
  if (degree == 10 && IsMajor(chord) && previous.Degree == 8 && IsMajor(previous)) {
    return TContext::kSpecialCaseFlat7AfterFlat6;
  }
  if (degree == 3 && (IsMajor(chord) || IsSus(chord))) return TContext::kSpecialCaseFlat3;
  if (degree == 5 && IsMinor(chord)) return TContext::kSpecialCaseMinorIV;
  if (degree == 7 && IsMinor(chord)) return TContext::kSpecialCaseMinorV;
  if (degree == 8 && IsMajor(chord)) return TContext::kSpecialCaseFlat6;
  if (degree == 10 && IsMajor(chord)) return TContext::kSpecialCaseFlat7;
  return TContext::kSpecialCaseNone;
}

void WriteFlag(std::ostream& out, const char* name, bool value) {
  out << ", " << name << ' ' << (value ? "yes" : "no");
}

struct TSpecialCaseName {
  int SpecialCase;
  const char* Name;
};

constexpr std::array<TSpecialCaseName, 13> kSpecialCaseNames{{
    {TContext::kSpecialCaseNone, "none"},
    {TContext::kSpecialCaseDiatonic, "diatonic"},
    {TContext::kSpecialCaseFlat6ToFlat7, "flat 6 to flat 7"},
    {TContext::kSpecialCaseFlat7AfterFlat6, "flat 7 after flat 6"},
    {TContext::kSpecialCaseNeapolitan, "Neapolitan"},
    {TContext::kSpecialCaseFlat3, "flat 3"},
    {TContext::kSpecialCaseMinorIV, "minor IV"},
    {TContext::kSpecialCaseMinorV, "minor V"},
    {TContext::kSpecialCaseFlat6, "flat 6"},
    {TContext::kSpecialCaseFlat7, "flat 7"},
    {TContext::kSpecialCasePassingDim, "passing diminished"},
    {TContext::kSpecialCaseChromaticMediant, "chromatic mediant"},
    {TContext::kSpecialCaseSusToSameRoot, "sus to the same root"},
}};

}  // namespace

// --- CScaleAlternativesChordContext

void CScaleAlternativesChordContext::FillFrom(const CChordLite& chord, const CScaleLite& scale) {
  Chord = chord;
  BasicChord = chord.BasicChord();
  ChordIncludingOptionsIsDiatonic = ScaleLite::ChordIncludingOptionsIsDiatonicInScale(chord, scale);
  ChordExcludingOptionsIsDiatonic = ScaleLite::ChordExcludingOptionsIsDiatonicInScale(chord, scale);
  ChordIsCompatible = ScaleLite::ChordIsCompatibleWithScale(chord, scale);
  HarmCenter = CHarmCenterLite(scale);
  Degree = scale.IsUndef() || chord.IsUndef()
               ? -1
               : NormalizedKeyNr(chord.RootKeyEnh.KeyNr - scale.RootKeyEnh.KeyNr);
  Scale = scale;
}

void CScaleAlternativesChordContext::WriteTrace(std::ostream& out) const {
  out << "CScaleAlternativesChordContext: ";
  WriteTraceBrief(out);
  out << ", BasicChord " << static_cast<int>(BasicChord);
  WriteFlag(out, "ChordIncludingOptionsIsDiatonic", ChordIncludingOptionsIsDiatonic);
  WriteFlag(out, "ChordExcludingOptionsIsDiatonic", ChordExcludingOptionsIsDiatonic);
  WriteFlag(out, "ChordIsCompatible", ChordIsCompatible);
  out << ", Degree " << Degree;
}

void CScaleAlternativesChordContext::WriteTraceBrief(std::ostream& out) const {
  Chord.WriteTraceBrief(out);
  out << " in ";
  if (Scale.IsUndef()) {
    out << "no scale";
  } else {
    Scale.WriteTraceBrief(out);
  }
}

void CScaleAlternativesChordContext::WriteInitializerList(std::ostream& out) const {
  out << "CScaleAlternativesChordContext(";
  Chord.WriteInitializerList(out);
  out << ", ";
  Scale.WriteInitializerList(out);
  out << ')';
}

// --- CScaleAlternativesContext

void CScaleAlternativesContext::FillFrom(const std::vector<CScaleAlternativesChordContext>& chords,
                                         std::size_t index) {
  const auto at = [&chords](std::size_t i) {
    return i < chords.size() ? chords[i] : CScaleAlternativesChordContext();
  };
  CurrentChord = at(index);
  NextChord = at(index + 1);
  NextNextChord = at(index + 2);
  PreviousChord = index > 0 ? at(index - 1) : CScaleAlternativesChordContext();
  SpecialCase = kSpecialCaseNone;
  _DetectSpecialCases();
}

void CScaleAlternativesContext::_DetectSpecialCases() {
  const TChordContext& chord = CurrentChord;
  const int degree = chord.Degree;
  if (chord.ChordIncludingOptionsIsDiatonic) {
    SpecialCase = kSpecialCaseDiatonic;
    return;
  }
  if (degree == 1 && IsMajor(chord)) {
    SpecialCase = kSpecialCaseNeapolitan;
    return;
  }
  const bool majorType = IsMajorTypeScale(chord.Scale);
  if (majorType && degree == 8 && IsMajor(chord) && NextChord.Degree == 10 && IsMajor(NextChord)) {
    SpecialCase = kSpecialCaseFlat6ToFlat7;
    return;
  }
  if (IsSus(chord) && NextChord.Chord.RootKeyEnh == chord.Chord.RootKeyEnh) {
    SpecialCase = kSpecialCaseSusToSameRoot;
    return;
  }
  if (majorType) {
    if (const int borrowed = BorrowedChordCase(*this); borrowed != kSpecialCaseNone) {
      SpecialCase = borrowed;
      return;
    }
  }
  if (_IsPassingDimChordToOtherChord(chord, NextChord)) {
    SpecialCase = kSpecialCasePassingDim;
    return;
  }
  if (_IsChromaticMediant(chord)) SpecialCase = kSpecialCaseChromaticMediant;
}

bool CScaleAlternativesContext::_IsPassingDimChordToOtherChord(const TChordContext& a,
                                                               const TChordContext& b) {
  if (!a.Exists() || !b.Exists()) return false;
  // With the sixth added, a diminished triad and a diminished seventh both read 0-3-6-9.
  if ((a.Chord.Semitones + CSemitones(512)).Word() != 585) return false;
  const CMySet<int> target = b.Chord.KeyNrSet();
  bool leadsUp = false;
  for (int key : a.Chord.KeyNrSet()) leadsUp = leadsUp || target.contains(NormalizedKeyNr(key + 1));
  return leadsUp && b.ChordIncludingOptionsIsDiatonic;
}

bool CScaleAlternativesContext::_IsChromaticMediant(const TChordContext& a) {
  return a.Exists() && (a.Degree == 3 || a.Degree == 8) && IsMinor(a);
}

bool CScaleAlternativesContext::_IsSecondaryVToOtherChord(const TChordContext& a,
                                                          const TChordContext& b) {
  return RootIntvlAbove(a, b) == 7 && IsMajor(a) &&
         (a.Chord.Semitones.HasIntvl(10) || !a.ChordIncludingOptionsIsDiatonic) &&
         b.ChordExcludingOptionsIsDiatonic;
}

bool CScaleAlternativesContext::_IsIImToOtherChord(const TChordContext& a, const TChordContext& b) {
  // 0-3-6-10: the half-diminished II of a minor key.
  return RootIntvlAbove(a, b) == 2 && (IsMinor(a) || a.Chord.Semitones.Word() == 1097) &&
         b.ChordExcludingOptionsIsDiatonic;
}

bool CScaleAlternativesContext::_AreSecondaryIImAndSecondaryVToOtherChord(const TChordContext& a,
                                                                          const TChordContext& b,
                                                                          const TChordContext& c) {
  return a.Exists() && b.Exists() && c.Exists() && _IsIImToOtherChord(a, c) &&
         _IsSecondaryVToOtherChord(b, c);
}

bool CScaleAlternativesContext::NextChordHasSameHarmonicCenter() const {
  return CurrentChord.Exists() && NextChord.Exists() && SameCenter(CurrentChord, NextChord);
}

bool CScaleAlternativesContext::NextTwoChordsHaveSameHarmonicCenter() const {
  return NextChordHasSameHarmonicCenter() && NextNextChord.Exists() &&
         SameCenter(NextChord, NextNextChord);
}

void CScaleAlternativesContext::WriteTrace(std::ostream& out) const {
  out << "CScaleAlternativesContext: SpecialCase " << SpecialCase << " ("
      << ScaleAlternativesSpecialCaseName(SpecialCase) << "), CurrentChord ";
  CurrentChord.WriteTrace(out);
  out << ", NextChord ";
  NextChord.WriteTraceBrief(out);
  out << ", NextNextChord ";
  NextNextChord.WriteTraceBrief(out);
  out << ", PreviousChord ";
  PreviousChord.WriteTraceBrief(out);
}

void CScaleAlternativesContext::WriteTraceBrief(std::ostream& out) const {
  CurrentChord.WriteTraceBrief(out);
  out << ": " << ScaleAlternativesSpecialCaseName(SpecialCase);
}

void CScaleAlternativesContext::WriteInitializerList(std::ostream& out) const {
  out << "CScaleAlternativesContext(";
  for (const TChordContext* chord : {&CurrentChord, &NextChord, &NextNextChord, &PreviousChord}) {
    chord->WriteInitializerList(out);
    out << ", ";
  }
  out << SpecialCase << ')';
}

const char* ScaleAlternativesSpecialCaseName(int specialCase) {
  for (const TSpecialCaseName& entry : kSpecialCaseNames) {
    if (entry.SpecialCase == specialCase) return entry.Name;
  }
  return "unknown";
}

}  // namespace harmony
