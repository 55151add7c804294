#pragma once
// The reader behind the harmony import: one flat delegate of the event-driven XML parser
// that collects the bars with their chord symbols, keys, time signatures and repeat marks,
// and at the end of the document plays the repeats out into a TMusicXMLDoc.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "harmony/musicxml/MusicXMLDoc.h"
#include "platform/XmlEventParser.h"

namespace harmony {

class MusicXmlParserHarmonyDelegate : public platform::XmlEventDelegate {
 public:
  // The elements this reader reacts to, looked up once at each element start.
  enum class TElement : std::uint8_t {
    kOther,
    kBassAlter,
    kBassStep,
    kBeatType,
    kBeats,
    kCoda,
    kDegree,
    kDegreeAlter,
    kDegreeType,
    kDegreeValue,
    kDirectionType,
    kDivisions,
    kDuration,
    kEnding,
    kFifths,
    kHarmony,
    kKind,
    kMeasure,
    kMode,
    kMovementTitle,
    kRehearsal,
    kRepeat,
    kRootAlter,
    kRootStep,
    kSegno,
    kWords,
  };

  // A crafted file could nest its jumps so that playing it out never ends or fills the
  // memory; no real score comes near these.
  static constexpr std::size_t kMaxMeasuresPlayed = std::size_t{1} << 17;
  static constexpr std::size_t kMaxHarmoniesPlayed = std::size_t{1} << 18;

  std::int32_t divisions = 0;
  std::int32_t beatsNumerator = -1;
  std::int32_t beatsDenominator = -1;
  std::int32_t lastSegno = -1;
  std::int32_t lastCoda = -1;
  std::int32_t fifths = -1;
  std::string currentElementName;
  std::string currentElementParentName;
  std::uint64_t ixLastRepetitionStart = 0;
  std::vector<TMusicXMLMeasure> measures;
  std::vector<std::pair<std::int32_t, std::int32_t>> codaPairs;
  std::vector<std::pair<std::int32_t, std::int32_t>> segnoPairs;
  TMusicXMLDoc musicXMLDoc;

  TMusicXMLDoc getDoc() const { return musicXMLDoc; }
  // True when playing the repeats out stopped at one of the limits above.
  bool unrollStopped() const { return _unrollStopped; }

  void parserDidStartDocument(platform::XmlEventParser& parser) override;
  void parserDidEndDocument(platform::XmlEventParser& parser) override;
  void didStartElement(platform::XmlEventParser& parser, std::string_view name,
                       std::string_view namespaceURI, std::string_view qualifiedName,
                       const platform::XmlAttributes& attributes) override;
  void didEndElement(platform::XmlEventParser& parser, std::string_view name,
                     std::string_view namespaceURI, std::string_view qualifiedName) override;
  void foundCharacters(platform::XmlEventParser& parser, std::string_view text) override;

  // The bars played in order: repeats, endings, D.S. al coda; fills the document's
  // harmonies, keys, time signatures, sections and copies.
  void UnrollMeasures();
  // Appends the bar's chords at `dist`, which grows by their lengths.
  void appendHarmoniesToDoc(const TMusicXMLMeasure& measure, double& dist, std::size_t barIndex);

  static TElement ElementFromName(std::string_view name);
  // A repeat count written above a bar, such as "3x": an "x" in two to four characters.
  static bool IsRepeatCountWord(std::string_view text);

 private:
  void _TextForBar(std::string_view text);
  void _TextForHarmony(std::string_view text, TMusicXMLHarmony& harmony);
  void _AppendKeyFromMode(std::string_view mode);

  TElement _current = TElement::kOther;
  TElement _parent = TElement::kOther;
  bool _unrollStopped = false;
};

}  // namespace harmony
