// Playing the bars of a lead sheet out into song time: repeats with their endings and repeat
// counts, D.S. al coda, and the keys, time signatures and rehearsal marks met on the way.

#include <sstream>

#include "musicxml/MusicXmlParserHarmonyDelegate.h"

namespace harmony {

namespace {

bool SameKey(const CHarmAnlsSignKey& a, const CHarmAnlsSignKey& b) {
  return a.SignKey.RootKeyEnh.KeyNr == b.SignKey.RootKeyEnh.KeyNr &&
         a.SignKey.RootKeyEnh.Enh == b.SignKey.RootKeyEnh.Enh &&
         a.SignKey.SignKeyType == b.SignKey.SignKeyType;
}

// "3x" plays a repeated section three times; the count is read from the word's start, so
// "x3" gives 0.
std::int32_t RepeatCountOfWord(const std::string& word) {
  std::istringstream in(word);
  std::int32_t count = 0;
  in >> count;
  return count;
}

}  // namespace

void MusicXmlParserHarmonyDelegate::appendHarmoniesToDoc(const TMusicXMLMeasure& measure,
                                                         double& dist, std::size_t /*barIndex*/) {
  TMusicXMLDoc& doc = musicXMLDoc;
  if (measure.Slash) doc.ChordSequences.push_back(doc.Harmonies.size());
  for (std::size_t k = 0; k < measure.Harmonies.size(); ++k) {
    if (doc.Harmonies.size() >= kMaxHarmoniesPlayed) {
      _unrollStopped = true;
      return;
    }
    TMusicXMLHarmony harmony = measure.Harmonies[k];
    harmony.Position = dist;
    if (harmony.Kind.empty()) harmony.Kind = "major";
    // "No chord" after another chord of the bar loses its root; a bar's first keeps it.
    if (k > 0 && harmony.Kind == "none") {
      harmony.Root.Step = "N.C.";
      harmony.Root.Alter = 0;
    }
    dist += harmony.Length;
    doc.Harmonies.push_back(std::move(harmony));
  }
}

void MusicXmlParserHarmonyDelegate::UnrollMeasures() {
  TMusicXMLDoc& doc = musicXMLDoc;
  const auto count = static_cast<long long>(measures.size());
  long long i = 0;
  double dist = 0.0;
  std::int32_t pass = 0;
  bool inRepeat = false;
  std::int32_t repeatTimes = 0;
  long long repeatStart = 0;
  bool afterDalSegno = false;
  std::size_t codaCursor = 0;
  std::size_t segnoCursor = 0;
  long long lastCodaBar = 0;
  bool firstSection = true;
  std::size_t played = 0;
  for (; i >= 0 && i < count; ++i) {
    if (++played > kMaxMeasuresPlayed || _unrollStopped) {
      _unrollStopped = true;
      return;
    }
    const TMusicXMLMeasure* bar = &measures[static_cast<std::size_t>(i)];
    if (bar->Rehearsal == 1) {
      doc.HarmSections.push_back({dist, false, true, firstSection});
      firstSection = false;
    }
    // An ending already played is stepped over up to the bar that closes the repeat. Bars
    // of the ending for this pass on the way hear the chords of the bar stepped over.
    if (bar->EndingNumber > 0 && bar->EndingNumber < pass && inRepeat) {
      const TMusicXMLMeasure* skipped = bar;
      for (; i < count && !measures[static_cast<std::size_t>(i)].RepeatBackward; ++i) {
        if (measures[static_cast<std::size_t>(i)].EndingNumber == pass) {
          appendHarmoniesToDoc(*skipped, dist, static_cast<std::size_t>(i));
        }
      }
      ++i;
      if (i < count) bar = &measures[static_cast<std::size_t>(i)];
      inRepeat = false;
    }
    if (bar->Beats != -1 && bar->BeatType != -1 &&
        (doc.TimeSignatures.empty() || doc.TimeSignatures.back().Beats != bar->Beats ||
         doc.TimeSignatures.back().BeatType != bar->BeatType)) {
      doc.TimeSignatures.push_back({dist, bar->Beats, bar->BeatType});
    }
    if (bar->KeyIndex >= 0 && static_cast<std::size_t>(bar->KeyIndex) < doc.HarmSignKeys.size()) {
      CHarmAnlsSignKey key = doc.HarmSignKeys[static_cast<std::size_t>(bar->KeyIndex)];
      key.Position = dist;
      if (!SameKey(doc.HarmSignKeys.back(), key)) doc.HarmSignKeys.push_back(std::move(key));
    }
    if (bar->RepeatForward && !inRepeat) {
      repeatTimes = bar->RepeatTimes;
      pass = 1;
      inRepeat = true;
      repeatStart = i;
    }
    if (bar->EndingNumber == 0 || bar->EndingNumber == pass) {
      appendHarmoniesToDoc(*bar, dist, static_cast<std::size_t>(i));
    }
    if (bar->RepeatBackward) {
      for (const std::string& word : bar->Words) {
        if (IsRepeatCountWord(word)) repeatTimes = RepeatCountOfWord(word);
      }
      if (pass < repeatTimes && !(bar->Coda && afterDalSegno)) {
        const auto bars = static_cast<std::int32_t>(i - repeatStart + 1);
        doc.HarmCopies.emplace_back(dist, bars, static_cast<std::uint64_t>(bars));
        i = repeatStart - 1;
        ++pass;
      } else {
        inRepeat = false;
      }
    }
    if (bar->Coda) lastCodaBar = i;
    bool dalSegnoPassedOver = false;
    if (bar->Coda && afterDalSegno) {
      if (codaCursor < codaPairs.size()) {
        afterDalSegno = false;
        inRepeat = false;
        i = codaPairs[codaCursor].second - 1;
        ++codaCursor;
      } else {
        dalSegnoPassedOver = true;
      }
    }
    if (!dalSegnoPassedOver && bar->DalSegnoAlCoda && !afterDalSegno && !inRepeat) {
      // Without a segno the sign sends the player back to the first bar.
      const long long target = segnoCursor < segnoPairs.size() ? segnoPairs[segnoCursor].second : 0;
      const auto bars = static_cast<std::int32_t>(lastCodaBar - target + 1);
      doc.HarmCopies.emplace_back(dist, bars, static_cast<std::uint64_t>(bars));
      inRepeat = false;
      ++segnoCursor;
      i = target - 1;
      afterDalSegno = true;
    }
  }
}

}  // namespace harmony
