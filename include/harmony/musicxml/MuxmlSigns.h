#pragma once
// The signs at the start of a staff and wherever they change: key signature, time signature,
// clef and the transposition of the instrument, as the event import hands them to a host.
// Positions are MIDI ticks; staff number 0 means all staves of the part.

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "harmony/musicxml/MuxmlAttributeGroups.h"
#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/XMLAttributes.h"
#include "harmony/musicxml/XMLElement.h"

namespace harmony {

// `transpose`: how far the written notes lie from the sounding ones (a B-flat clarinet
// writes D for the sounding C: diatonic -1, chromatic -2).
class CMuxmlTranspose : public TraceFamily<CMuxmlTranspose> {
 public:
  bool mHasBeenReadFromXML = false;
  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::uint64_t mStaffNumber = 0;
  std::int32_t mDiatonic = 0;
  float mChromatic = 0.0f;
  std::int32_t mOctaveChange = 0;
  bool mDouble = false;

  // Marks the record as read, and takes "number".
  void ReadFromAttributes(const CXMLAttributes& attributes);
  // Reads a whole `transpose` element of the tree ahead of the running position; what it
  // lacks keeps its present value.
  void ReadFromXMLElement(const CXMLElement& element);

  // The order of the note counts per transposition: staff, diatonic, chromatic. Values
  // that differ only in the octave change answer false both ways and so count as one; at
  // an equal octave change a value without `double` comes before one with it.
  bool operator<(const CMuxmlTranspose& other) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// `key`: a traditional key signature, sharps (positive) or flats of mFifths, and its mode.
class CMuxmlSignKey : public CMuxmlXYColor, public CMuxmlFont, public TraceFamily<CMuxmlSignKey> {
 public:
  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::uint64_t mStaffNumber = 0;
  TMuxmlEnum_YesNo::TType mPrintObject = MuxmlEnumUndef<TMuxmlEnum_YesNo>();
  // No signs until a `fifths` says otherwise.
  std::int32_t mFifths = 0;
  TMuxmlEnum_SignKeyMode::TType mMode = MuxmlEnumUndef<TMuxmlEnum_SignKeyMode>();
  // The transposition in force where the key stands, for the sounding key.
  CMuxmlTranspose mPartTransposeAtSignKey;

  // The groups, "number" (the staff), "print-object".
  void ReadFromAttributes(const CXMLAttributes& attributes);

  // The key as written: minor for the modes with a minor third (minor, dorian, phrygian,
  // aeolian, locrian), major for all others, "none" and an absent mode included.
  CSignKeyHeavy ConvertToCSignKeyTransposedPitch() const;
  // The key as it sounds: the written key's root moved by the chromatic transposition
  // within its octave, then spelled with the fewest signs.
  CSignKeyHeavy ConvertToCSignKeySoundingPitch() const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// `time`: mNomAkaBeats beats of the value 1/mDenomAkaBeatTypeAsInt; a compound signature
// written "3+2" keeps its parts and counts their sum as the beats.
class CMuxmlSignTime : public CMuxmlXYColor, public CMuxmlFont, public TraceFamily<CMuxmlSignTime> {
 public:
  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::uint64_t mStaffNumber = 0;
  TMuxmlEnum_YesNo::TType mPrintObject = MuxmlEnumUndef<TMuxmlEnum_YesNo>();
  std::string mSymbol;
  std::int32_t mNomAkaBeats = 4;
  std::vector<int> mCompoundNomsAkaBeats;
  std::int32_t mDenomAkaBeatTypeAsInt = 4;
  bool mSenzaMisura = false;

  // The groups, "symbol", "number" (the staff), "print-object".
  void ReadFromAttributes(const CXMLAttributes& attributes);
  // One child of `time` by its name: "senza-misura", "beats" or "beat-type"; others and an
  // empty name change nothing.
  void SetElementFromString(std::string_view name, std::string_view text);
  // The length of a bar in divisions, `divisionsPQN` divisions to the quarter note.
  double BarLengthFromDivisisionsPQNAsDuration(std::uint64_t divisionsPQN) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// `clef`: mSign (TMuxmlEnum_ClefSign) on staff line mStaffLine, counted from the bottom.
class CMuxmlClef : public CMuxmlXYColor, public CMuxmlFont, public TraceFamily<CMuxmlClef> {
 public:
  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::uint64_t mStaffNumber = 0;
  std::int32_t mPrintObject = kMuxmlUndef32;   // TMuxmlEnum_YesNo
  std::int32_t mAdditional = kMuxmlUndef32;    // TMuxmlEnum_YesNo
  std::int32_t mSize = kMuxmlUndef32;          // TMuxmlEnum_SymbolSize
  std::int32_t mAfterBarline = kMuxmlUndef32;  // TMuxmlEnum_YesNo
  std::int32_t mSign = kMuxmlUndef32;          // TMuxmlEnum_ClefSign
  std::int32_t mStaffLine = kMuxmlUndef32;
  std::int32_t mClefOctaveChange = 0;
  CXMLElement mStaffDetailsXML;

  // The groups, "number" (the staff), "print-object", "additional", "size", "after-barline".
  void ReadFromAttributes(const CXMLAttributes& attributes);

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
