#pragma once
// CSignKeyHeavy: a heavy scale that stays major or minor, for spelling by a key signature.

#include <ostream>
#include <string>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Note.h"

namespace harmony {

class CSignKeyHeavy : public CScaleHeavy, public TraceFamily<CSignKeyHeavy> {
 public:
  // An undefined root, major. Built during static initialisation: don't read it from
  // another static initialiser.
  static const CSignKeyHeavy Undef;

  // The trace family of the sign key, not that of the scale.
  using TraceFamily<CSignKeyHeavy>::Trace;
  using TraceFamily<CSignKeyHeavy>::TraceBrief;
  using TraceFamily<CSignKeyHeavy>::TraceStr;
  using TraceFamily<CSignKeyHeavy>::TraceString;
  using TraceFamily<CSignKeyHeavy>::TraceBriefString;
  using TraceFamily<CSignKeyHeavy>::TraceForInitializerList;
  using TraceFamily<CSignKeyHeavy>::StringForInitializerList;

  CSignKeyHeavy() : CSignKeyHeavy(CNote::Undef, TSignKeyTypeNoUndef::Major) {}
  CSignKeyHeavy(const CNote& root, TSignKeyTypeNoUndef type);
  CSignKeyHeavy(const CKeyEnh& root, TSignKeyTypeNoUndef type);
  // The root spelled with the fewest signs.
  CSignKeyHeavy(int rootKeyNr, TSignKeyTypeNoUndef type);
  explicit CSignKeyHeavy(const CSignKeyNoEnh& signKey);

  void SetRootKeyEnhAndSignKeyType(const CKeyEnh& root, TSignKeyTypeNoUndef type);
  // The key with this many sharps (positive) or flats, found on the circle of fifths from C
  // major or A minor, so -7..7 give the keys of the event byte. Counts beyond the
  // triple accidentals (-24..24) are clamped.
  void SetFromSignsCountAndType(int signsCount, TSignKeyTypeNoUndef type);
  // Takes the major or minor record with the root kept; nothing happens if the type agrees.
  void SetSignKeyType(TSignKeyTypeNoUndef type);
  void SetRootNoteEnhWithLeastSigns();

  TSignKeyTypeNoUndef SignKeyType() const;
  CScaleLite Scale() const { return CScaleLite(*this); }
  // The short name of the sign key ("F♯m").
  std::string Name(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;

  // Reads "root" with "nr" and "enh", and "type" as the heavy scale writes them.
  static CSignKeyHeavy FromJSONDict(const JsonDict& dict);
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
