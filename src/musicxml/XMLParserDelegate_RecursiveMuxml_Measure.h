#pragma once
// The reader of one `measure`: the bar's time line in ticks (its start, backup and forward,
// and its end, which the time signature alone decides), and the signs met in it: divisions,
// time, key, clef and transposition. Notes and sounds have readers of their own.

#include "harmony/musicxml/MuxmlMeasure.h"
#include "harmony/musicxml/MuxmlSigns.h"
#include "musicxml/XMLParserDelegate_RecursiveMuxml.h"

namespace harmony {

class XMLParserDelegate_RecursiveMuxml_Measure : public XMLParserDelegate_RecursiveMuxml {
 public:
  CMuxmlMeasure* EncounteredMeasure() { return &_measure; }
  void SetEncounteredMeasure(const CMuxmlMeasure& measure) { _measure = measure; }
  CMuxmlSignKey* EncounteredSignKey() { return &_signKey; }
  void SetEncounteredSignKey(const CMuxmlSignKey& signKey) { _signKey = signKey; }
  CMuxmlSignTime* EncounteredSignTime() { return &_signTime; }
  void SetEncounteredSignTime(const CMuxmlSignTime& signTime) { _signTime = signTime; }
  CMuxmlClef* EncounteredClef() { return &_clef; }
  void SetEncounteredClef(const CMuxmlClef& clef) { _clef = clef; }
  CMuxmlTranspose* EncounteredTranspose() { return &_transpose; }
  void SetEncounteredTranspose(const CMuxmlTranspose& transpose) { _transpose = transpose; }

  void didStartMyElement(platform::XmlEventParser& parser, std::string_view elementName,
                         std::string_view namespaceURI, std::string_view qualifiedName,
                         const CXMLAttributes& attributes) override;
  void didStartElement(platform::XmlEventParser& parser, std::string_view elementName,
                       std::string_view namespaceURI, std::string_view qualifiedName,
                       const CXMLAttributes& attributes) override;
  void didEndElement(platform::XmlEventParser& parser, std::string_view elementName,
                     std::string_view namespaceURI, std::string_view qualifiedName) override;

  void encounteredMeasureStart(const CXMLAttributes& attributes);
  void encounteredMeasureEnd();
  void encounteredSignTime();
  void encounteredSignKey();
  void encounteredClef();
  void encounteredTranspose();
  void encounteredDirection();

  // A pickup bar: how much its content lacks of a whole bar, in divisions.
  void _encounteredMeasureStart_detectIncompleteFirstBar();
  std::int32_t _findMaxPosInCurrentPartMeasureAsDuration() const;
  std::int32_t _encounteredMeasureStart_detectIncompleteFirstBar_barLengthOfFirstSignTimeAsDuration();

 protected:
  void interpretText(platform::XmlEventParser& parser, std::string_view text) override;

 private:
  void _attributesText(platform::XmlEventParser& parser, std::string_view text);
  void _divisionsText(platform::XmlEventParser& parser, std::string_view text);
  void _durationText(std::string_view text);

  CMuxmlMeasure _measure;
  CMuxmlSignKey _signKey;
  CMuxmlSignTime _signTime;
  CMuxmlClef _clef;
  CMuxmlTranspose _transpose;
};

}  // namespace harmony
