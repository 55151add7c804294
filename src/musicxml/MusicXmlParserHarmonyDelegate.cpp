#include "musicxml/MusicXmlParserHarmonyDelegate.h"

#include <algorithm>
#include <array>
#include <limits>

#include "harmony/chords/SignKeyHeavy.h"
#include "musicxml/MusicXmlText.h"

namespace harmony {

namespace {

using TElement = MusicXmlParserHarmonyDelegate::TElement;

struct TElementName {
  std::string_view name;
  TElement element;
};

// Sorted by name for the binary search.
constexpr std::array<TElementName, 25> kElementNames{{
    {"bass-alter", TElement::kBassAlter},
    {"bass-step", TElement::kBassStep},
    {"beat-type", TElement::kBeatType},
    {"beats", TElement::kBeats},
    {"coda", TElement::kCoda},
    {"degree", TElement::kDegree},
    {"degree-alter", TElement::kDegreeAlter},
    {"degree-type", TElement::kDegreeType},
    {"degree-value", TElement::kDegreeValue},
    {"direction-type", TElement::kDirectionType},
    {"divisions", TElement::kDivisions},
    {"duration", TElement::kDuration},
    {"ending", TElement::kEnding},
    {"fifths", TElement::kFifths},
    {"harmony", TElement::kHarmony},
    {"kind", TElement::kKind},
    {"measure", TElement::kMeasure},
    {"mode", TElement::kMode},
    {"movement-title", TElement::kMovementTitle},
    {"rehearsal", TElement::kRehearsal},
    {"repeat", TElement::kRepeat},
    {"root-alter", TElement::kRootAlter},
    {"root-step", TElement::kRootStep},
    {"segno", TElement::kSegno},
    {"words", TElement::kWords},
}};

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

}  // namespace

bool MusicXmlParserHarmonyDelegate::IsRepeatCountWord(std::string_view text) {
  const std::size_t length = CharacterCount(text);
  return text.find('x') != std::string_view::npos && length >= 2 && length <= 4;
}

MusicXmlParserHarmonyDelegate::TElement MusicXmlParserHarmonyDelegate::ElementFromName(
    std::string_view name) {
  const auto found = std::lower_bound(
      kElementNames.begin(), kElementNames.end(), name,
      [](const TElementName& entry, std::string_view key) { return entry.name < key; });
  return found != kElementNames.end() && found->name == name ? found->element : TElement::kOther;
}

void MusicXmlParserHarmonyDelegate::parserDidStartDocument(platform::XmlEventParser& /*parser*/) {
  lastSegno = -1;
  lastCoda = -1;
  fifths = -1;
  measures.clear();
}

void MusicXmlParserHarmonyDelegate::parserDidEndDocument(platform::XmlEventParser& /*parser*/) {
  UnrollMeasures();
}

void MusicXmlParserHarmonyDelegate::didStartElement(platform::XmlEventParser& /*parser*/,
                                                    std::string_view name,
                                                    std::string_view /*namespaceURI*/,
                                                    std::string_view /*qualifiedName*/,
                                                    const platform::XmlAttributes& attributes) {
  currentElementParentName = currentElementName;
  currentElementName = name;
  _parent = _current;
  _current = ElementFromName(name);
  if (_current == TElement::kMeasure) {
    measures.emplace_back();
    return;
  }
  if (measures.empty()) return;
  TMusicXMLMeasure& measure = measures.back();
  const auto lastIndex = static_cast<std::int32_t>(measures.size() - 1);
  switch (_current) {
    case TElement::kHarmony:
      measure.Harmonies.emplace_back();
      break;
    case TElement::kDegree:
      if (!measure.Harmonies.empty()) measure.Harmonies.back().Degrees.emplace_back();
      break;
    case TElement::kRepeat: {
      const std::string_view direction = attributes.ValueOr("direction");
      if (direction == "forward") {
        measure.RepeatForward = true;
        measure.RepeatTimes = 2;
        ixLastRepetitionStart = static_cast<std::uint64_t>(lastIndex);
      } else if (direction == "backward") {
        measure.RepeatBackward = true;
      }
      break;
    }
    case TElement::kRehearsal:
      measure.Rehearsal = 1;
      break;
    case TElement::kEnding:
      // Only the ending that closes a repeat without a hook carries its number: the first
      // ending of the usual pair is played on every pass.
      if (attributes.ValueOr("type") == "discontinue") {
        measure.EndingNumber = musicxml::IntValueOfText(attributes.ValueOr("number"));
      }
      break;
    case TElement::kSegno:
      lastSegno = lastIndex;
      measure.Segno = true;
      break;
    case TElement::kCoda:
      if (lastCoda != -1) codaPairs.emplace_back(lastCoda, lastIndex);
      lastCoda = lastIndex;
      measure.Coda = true;
      break;
    default:
      break;
  }
}

void MusicXmlParserHarmonyDelegate::didEndElement(platform::XmlEventParser& /*parser*/,
                                                  std::string_view /*name*/,
                                                  std::string_view /*namespaceURI*/,
                                                  std::string_view /*qualifiedName*/) {
  currentElementName.clear();
  _current = TElement::kOther;
}

void MusicXmlParserHarmonyDelegate::foundCharacters(platform::XmlEventParser& /*parser*/,
                                                    std::string_view text) {
  if (_current == TElement::kOther) return;
  if (_current == TElement::kMovementTitle) {
    musicXMLDoc.Title = text;
    return;
  }
  if (measures.empty()) return;
  _TextForBar(text);
}

void MusicXmlParserHarmonyDelegate::_TextForBar(std::string_view text) {
  TMusicXMLMeasure& measure = measures.back();
  switch (_current) {
    case TElement::kDivisions:
      divisions = musicxml::IntValueOfText(text);
      return;
    case TElement::kBeats:
      beatsNumerator = measure.Beats = musicxml::IntValueOfText(text);
      return;
    case TElement::kBeatType:
      beatsDenominator = measure.BeatType = musicxml::IntValueOfText(text);
      return;
    case TElement::kFifths:
      fifths = musicxml::IntValueOfText(text);
      return;
    case TElement::kMode:
      _AppendKeyFromMode(text);
      return;
    default:
      break;
  }
  if (!measure.Harmonies.empty()) {
    _TextForHarmony(text, measure.Harmonies.back());
    return;
  }
  // Before the bar's first chord only the words above it count.
  if (_current != TElement::kWords || _parent != TElement::kDirectionType) return;
  if (IsRepeatCountWord(text)) measure.Words.emplace_back(text);
  if (text == "D.S. al Coda") {
    if (lastSegno != -1)
      segnoPairs.emplace_back(static_cast<std::int32_t>(measures.size() - 1), lastSegno);
    measure.DalSegnoAlCoda = true;
  }
  if (text == "/") measure.Slash = true;
}

void MusicXmlParserHarmonyDelegate::_TextForHarmony(std::string_view text,
                                                    TMusicXMLHarmony& harmony) {
  switch (_current) {
    case TElement::kDuration:
      // Every duration after the chord in its bar lands here, so the last one wins.
      harmony.Length = divisions == 0 ? std::numeric_limits<double>::lowest()
                                      : static_cast<double>(musicxml::IntValueOfText(text)) /
                                            static_cast<double>(divisions);
      return;
    case TElement::kRootStep:
      harmony.Root.Step = text;
      return;
    case TElement::kRootAlter:
      harmony.Root.Alter = musicxml::IntValueOfText(text);
      return;
    case TElement::kBassStep:
      harmony.Bass.Step = text;
      return;
    case TElement::kBassAlter:
      harmony.Bass.Alter = musicxml::IntValueOfText(text);
      return;
    case TElement::kKind:
      harmony.Kind = text;
      return;
    default:
      break;
  }
  if (harmony.Degrees.empty()) return;
  TMusicXMLDegree& degree = harmony.Degrees.back();
  if (_current == TElement::kDegreeValue) degree.Value = text;
  if (_current == TElement::kDegreeAlter) degree.Alter = musicxml::IntValueOfText(text);
  if (_current == TElement::kDegreeType) degree.Type = text;
}

void MusicXmlParserHarmonyDelegate::_AppendKeyFromMode(std::string_view mode) {
  // A key signature counts once its mode is known; a key without a mode makes no entry.
  CSignKeyHeavy key;
  key.SetFromSignsCountAndType(
      fifths, mode == "minor" ? TSignKeyTypeNoUndef::Minor : TSignKeyTypeNoUndef::Major);
  musicXMLDoc.HarmSignKeys.emplace_back(kHarmAnlsUndefDouble, kHarmAnlsUndefDouble,
                                        CSignKeyLite(key));
  measures.back().KeyIndex = static_cast<std::int32_t>(musicXMLDoc.HarmSignKeys.size() - 1);
}

}  // namespace harmony
