#include "harmony/musicxml/MuxmlSigns.h"

#include <cmath>

#include "harmony/musicxml/MusicXmlXPath.h"
#include "musicxml/MuxmlRead.h"
#include "musicxml/MuxmlTraceOut.h"

namespace harmony {

using namespace musicxml;

// --- CMuxmlTranspose

void CMuxmlTranspose::ReadFromAttributes(const CXMLAttributes& attributes) {
  mHasBeenReadFromXML = true;
  ReadUnsigned(attributes, "number", mStaffNumber);
}

void CMuxmlTranspose::ReadFromXMLElement(const CXMLElement& element) {
  mHasBeenReadFromXML = true;
  // The staff number is an attribute of `transpose`, so this path finds it only where a
  // file has an element of that name below it.
  if (const auto staff = StringObjectForXPath(element, ".//number")) {
    mStaffNumber = UnsignedValueOfText(*staff);
  }
  mDiatonic = IntValueForXPath(element, ".//diatonic", mDiatonic);
  mChromatic = static_cast<float>(DoubleValueForXPath(element, ".//chromatic", mChromatic));
  mOctaveChange = IntValueForXPath(element, ".//octave-change", mOctaveChange);
  mDouble = XPathExists(element, ".//double");
}

bool CMuxmlTranspose::operator<(const CMuxmlTranspose& other) const {
  if (mStaffNumber != other.mStaffNumber) return mStaffNumber < other.mStaffNumber;
  if (mDiatonic != other.mDiatonic) return mDiatonic < other.mDiatonic;
  if (mChromatic != other.mChromatic) return mChromatic < other.mChromatic;
  if (mOctaveChange != other.mOctaveChange) return false;
  return !mDouble && other.mDouble;
}

namespace {

template <class TFields>
void WriteTransposeFields(const CMuxmlTranspose& t, TFields&& fields) {
  fields("mHasBeenReadFromXML", t.mHasBeenReadFromXML)(
      "mPositionAsMidiTicks", t.mPositionAsMidiTicks)("mStaffNumber", t.mStaffNumber)(
      "mDiatonic", t.mDiatonic)("mChromatic", t.mChromatic)("mOctaveChange", t.mOctaveChange)(
      "mDouble", t.mDouble);
}

}  // namespace

void CMuxmlTranspose::WriteTrace(std::ostream& out) const {
  out << "CMuxmlTranspose: ";
  WriteTransposeFields(*this, TMuxmlFieldOut(out, " "));
}

void CMuxmlTranspose::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlTranspose: ";
  TMuxmlFieldOut(out, " ")("diatonic", mDiatonic)("chromatic", mChromatic)("octave-change",
                                                                           mOctaveChange);
}

void CMuxmlTranspose::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlTranspose{";
  WriteTransposeFields(*this, TMuxmlFieldOut(out, " = "));
  out << '}';
}

// --- CMuxmlSignKey

void CMuxmlSignKey::ReadFromAttributes(const CXMLAttributes& attributes) {
  CMuxmlXYColor::ReadFromAttributes(attributes);
  CMuxmlFont::ReadFromAttributes(attributes);
  ReadUnsigned(attributes, "number", mStaffNumber);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "print-object", mPrintObject);
}

CSignKeyHeavy CMuxmlSignKey::ConvertToCSignKeyTransposedPitch() const {
  bool minor = false;
  switch (mMode) {
    case TMuxmlEnum_SignKeyMode::kMinor:
    case TMuxmlEnum_SignKeyMode::kDorian:
    case TMuxmlEnum_SignKeyMode::kPhrygian:
    case TMuxmlEnum_SignKeyMode::kAeolian:
    case TMuxmlEnum_SignKeyMode::kLocrian:
      minor = true;
      break;
    default:
      break;
  }
  CSignKeyHeavy key;
  key.SetFromSignsCountAndType(mFifths,
                               minor ? TSignKeyTypeNoUndef::Minor : TSignKeyTypeNoUndef::Major);
  return key;
}

CSignKeyHeavy CMuxmlSignKey::ConvertToCSignKeySoundingPitch() const {
  CSignKeyHeavy key = ConvertToCSignKeyTransposedPitch();
  const CKeyEnh written = key.RootKeyEnh();
  // A chromatic transposition is a whole number of semitones in any real file.
  const int shift = TruncateToInt32(std::round(mPartTransposeAtSignKey.mChromatic)) % 12;
  key.SetRootKeyEnhWithoutCalcEnh(CKeyEnh(NormalizedKeyNr(written.KeyNr + shift), written.Enh));
  key.CalcEnh();
  key.SetRootNoteEnhWithLeastSigns();
  return key;
}

namespace {

template <class TFields>
void WriteSignKeyFields(const CMuxmlSignKey& k, TFields&& fields) {
  fields("mPositionAsMidiTicks", k.mPositionAsMidiTicks)("mStaffNumber", k.mStaffNumber)
      .template Enum<TMuxmlEnum_YesNo>("mPrintObject", k.mPrintObject)("mFifths", k.mFifths)
      .template Enum<TMuxmlEnum_SignKeyMode>("mMode", k.mMode);
}

}  // namespace

void CMuxmlSignKey::WriteTrace(std::ostream& out) const {
  out << "CMuxmlSignKey: ";
  WriteSignKeyFields(*this, TMuxmlFieldOut(out, " "));
  out << ", mPartTransposeAtSignKey ";
  mPartTransposeAtSignKey.WriteTraceBrief(out);
}

void CMuxmlSignKey::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlSignKey: ";
  TMuxmlFieldOut(out, " ")("position", mPositionAsMidiTicks)("fifths", mFifths)
      .Enum<TMuxmlEnum_SignKeyMode>("mode", mMode);
}

void CMuxmlSignKey::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlSignKey{";
  WriteSignKeyFields(*this, TMuxmlFieldOut(out, " = "));
  out << ", mPartTransposeAtSignKey = ";
  mPartTransposeAtSignKey.WriteInitializerList(out);
  out << '}';
}

// --- CMuxmlSignTime

void CMuxmlSignTime::ReadFromAttributes(const CXMLAttributes& attributes) {
  CMuxmlXYColor::ReadFromAttributes(attributes);
  CMuxmlFont::ReadFromAttributes(attributes);
  ReadString(attributes, "symbol", mSymbol);
  ReadUnsigned(attributes, "number", mStaffNumber);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "print-object", mPrintObject);
}

void CMuxmlSignTime::SetElementFromString(std::string_view name, std::string_view text) {
  if (name.empty()) return;
  if (name == "senza-misura") {
    mSenzaMisura = true;
  } else if (name == "beats") {
    if (text.find('+') == std::string_view::npos) {
      mNomAkaBeats = IntValueOfText(text);
      return;
    }
    // A compound signature such as 3+2 over 8: the parts are kept, the bar has their sum.
    std::int32_t sum = 0;
    for (std::size_t start = 0;;) {
      const std::size_t plus = text.find('+', start);
      const std::int32_t part = IntValueOfText(text.substr(start, plus - start));
      mCompoundNomsAkaBeats.push_back(part);
      sum = AddSaturated32(sum, part);
      if (plus == std::string_view::npos) break;
      start = plus + 1;
    }
    mNomAkaBeats = sum;
  } else if (name == "beat-type") {
    mDenomAkaBeatTypeAsInt = IntValueOfText(text);
  }
}

double CMuxmlSignTime::BarLengthFromDivisisionsPQNAsDuration(std::uint64_t divisionsPQN) const {
  return 4.0 / mDenomAkaBeatTypeAsInt * static_cast<double>(divisionsPQN) * mNomAkaBeats;
}

namespace {

template <class TFields>
void WriteSignTimeFields(const CMuxmlSignTime& t, TFields&& fields) {
  fields("mPositionAsMidiTicks", t.mPositionAsMidiTicks)("mStaffNumber", t.mStaffNumber)
      .template Enum<TMuxmlEnum_YesNo>("mPrintObject", t.mPrintObject)("mSymbol", t.mSymbol)(
          "mNomAkaBeats", t.mNomAkaBeats)("mCompoundNomsAkaBeats", t.mCompoundNomsAkaBeats)(
          "mDenomAkaBeatTypeAsInt", t.mDenomAkaBeatTypeAsInt)("mSenzaMisura", t.mSenzaMisura);
}

}  // namespace

void CMuxmlSignTime::WriteTrace(std::ostream& out) const {
  out << "CMuxmlSignTime: ";
  WriteSignTimeFields(*this, TMuxmlFieldOut(out, " "));
}

void CMuxmlSignTime::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlSignTime: " << mNomAkaBeats << '/' << mDenomAkaBeatTypeAsInt << ", ";
  TMuxmlFieldOut(out, " ")("position", mPositionAsMidiTicks);
}

void CMuxmlSignTime::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlSignTime{";
  WriteSignTimeFields(*this, TMuxmlFieldOut(out, " = "));
  out << '}';
}

// --- CMuxmlClef

void CMuxmlClef::ReadFromAttributes(const CXMLAttributes& attributes) {
  CMuxmlXYColor::ReadFromAttributes(attributes);
  CMuxmlFont::ReadFromAttributes(attributes);
  ReadUnsigned(attributes, "number", mStaffNumber);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "print-object", mPrintObject);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "additional", mAdditional);
  ReadEnum<TMuxmlEnum_SymbolSize>(attributes, "size", mSize);
  ReadEnum<TMuxmlEnum_YesNo>(attributes, "after-barline", mAfterBarline);
}

namespace {

template <class TFields>
void WriteClefFields(const CMuxmlClef& c, TFields&& fields) {
  using YesNo = TMuxmlEnum_YesNo;
  fields("mPositionAsMidiTicks", c.mPositionAsMidiTicks)("mStaffNumber", c.mStaffNumber)
      .template Enum<YesNo>("mPrintObject", static_cast<YesNo::TType>(c.mPrintObject))
      .template Enum<YesNo>("mAdditional", static_cast<YesNo::TType>(c.mAdditional))
      .template Enum<TMuxmlEnum_SymbolSize>("mSize",
                                            static_cast<TMuxmlEnum_SymbolSize::TType>(c.mSize))
      .template Enum<YesNo>("mAfterBarline", static_cast<YesNo::TType>(c.mAfterBarline))
      .template Enum<TMuxmlEnum_ClefSign>(
          "mSign", static_cast<TMuxmlEnum_ClefSign::TType>(c.mSign))("mStaffLine", c.mStaffLine)(
          "mClefOctaveChange", c.mClefOctaveChange)("mStaffDetailsXML", c.mStaffDetailsXML);
}

}  // namespace

void CMuxmlClef::WriteTrace(std::ostream& out) const {
  out << "CMuxmlClef: ";
  WriteClefFields(*this, TMuxmlFieldOut(out, " "));
}

void CMuxmlClef::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlClef: ";
  TMuxmlFieldOut(out, " ")("position", mPositionAsMidiTicks)("staff", mStaffNumber)
      .Enum<TMuxmlEnum_ClefSign>("sign", static_cast<TMuxmlEnum_ClefSign::TType>(mSign))(
          "line", mStaffLine);
}

void CMuxmlClef::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlClef{";
  WriteClefFields(*this, TMuxmlFieldOut(out, " = "));
  out << '}';
}

}  // namespace harmony
