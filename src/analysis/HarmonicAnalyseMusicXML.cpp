// The analyser's way in from MusicXML: the chord symbols of the harmony import, placed in
// the sign keys the file gives, then the same analysis as for every other way in.

#include <algorithm>

#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/musicxml/MusicXMLDoc.h"

namespace harmony {

namespace {

bool IsNoChord(const TMusicXMLHarmony& harmony) {
  return harmony.Root.Step == "N.C." || harmony.Kind == "none";
}

}  // namespace

void CHarmonicAnalyse::AnalyseFromMusicXMLFile(const std::string& path, TAnalyse analyse) {
  TMusicXMLDoc doc;
  doc.LoadFromMusicXMLFile(path);
  AnalyseFromMusicXMLDoc(doc, analyse);
}

void CHarmonicAnalyse::AnalyseFromMusicXMLDoc(const TMusicXMLDoc& doc, TAnalyse analyse) {
  _FillAnalyserWithMusicXMLDoc(doc);
  Analyse(analyse);
}

void CHarmonicAnalyse::_FillAnalyserWithMusicXMLDoc(const TMusicXMLDoc& doc) {
  _InputChords.clear();
  _HarmSignKeys.insert(_HarmSignKeys.end(), doc.HarmSignKeys.begin(), doc.HarmSignKeys.end());
  if (_HarmSignKeys.empty()) {
    _HarmSignKeys.emplace_back(kHarmAnlsUndefDouble, kHarmAnlsUndefDouble, CSignKeyLite::Undef);
  }
  double endPos = kHarmAnlsUndefDouble;
  bool counted = false;
  for (const TMusicXMLHarmony& harmony : doc.Harmonies) {
    if (IsNoChord(harmony)) continue;
    CChordLite lite;
    lite.SetFromChordHeavy(CChordSetFromMusicXml(harmony, CIntvlSet::kDefaultWrapIntvl));
    const CHarmAnlsChordWithPos chord(CHarmAnlsChord(lite, -1, -1), harmony.Position);
    _InputChords.push_back(chord);
    // The key that holds the chord is the last one not placed behind it; a chord ahead of
    // every key stays in the input list only.
    const auto holder = std::find_if(
        _HarmSignKeys.rbegin(), _HarmSignKeys.rend(),
        [&](const CHarmAnlsSignKey& signKey) { return !(signKey.Position > harmony.Position); });
    if (holder != _HarmSignKeys.rend()) {
      if (holder->HarmCenters.empty()) {
        holder->HarmCenters.emplace_back(kHarmAnlsUndefDouble, kHarmAnlsUndefDouble,
                                         CHarmCenterLite());
      }
      holder->HarmCenters.front().HarmChords.push_back(chord);
    }
    endPos = harmony.Position + harmony.Length;
    counted = true;
  }
  // The tree closes the piece with an undefined chord at its end; the input list does not.
  CHarmAnlsSignKey& last = _HarmSignKeys.back();
  if (counted && !last.HarmCenters.empty()) {
    last.HarmCenters.back().HarmChords.emplace_back(CHarmAnlsChord(CChordLite(), -1, -1), endPos);
  }
  _ChordSequences = doc.ChordSequences;
}

}  // namespace harmony
