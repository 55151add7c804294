// Construction, the table accessors and the text forms of the heavy scale.

#include "harmony/chords/ScaleHeavy.h"

#include "chords/LeastSigns.h"
#include "chords/ScaleTypeTable.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/ScaleNameReader.h"
#include "harmony/pitch/KeyNames.h"
#include "platform/Localize.h"

namespace harmony {

namespace {

bool IsTableIndex(int index) { return index >= 0 && index < CScaleHeavy::kNumAvailableScales; }

const TScaleData& TableRowForType(TScaleType type) {
  return CScaleHeavy::mScaleData[static_cast<std::size_t>(CScaleHeavy::ScaleIndexFromType(type))];
}

// Intervals folded into the octave, as a mask.
CSemitones FoldedSemitones(const CIntvlSet& intvls) {
  CSemitones semitones;
  for (int intvl : intvls)
    semitones.SetSemitone(static_cast<unsigned long>(((intvl % 12) + 12) % 12), true);
  return semitones;
}

}  // namespace

// --- The table

TScaleType CScaleHeavy::GetTypeForScaleAtIndex(int index) {
  return IsTableIndex(index) ? mScaleData[static_cast<std::size_t>(index)].Type : st_maj;
}

const char* CScaleHeavy::GetNameForScaleAtIndex(int index) {
  return IsTableIndex(index) ? mScaleData[static_cast<std::size_t>(index)].Name : nullptr;
}

int CScaleHeavy::ScaleIndexFromType(TScaleType type) {
  for (int index = 0; index < kNumAvailableScales; ++index) {
    if (mScaleData[static_cast<std::size_t>(index)].Type == type) return index;
  }
  return 0;
}

const char* CScaleHeavy::GetNameForScaleType(TScaleType type) { return TableRowForType(type).Name; }

std::int32_t CScaleHeavy::GetModeForScaleType(TScaleType type) {
  return TableRowForType(type).Mode;
}

std::int32_t CScaleHeavy::GetDegreesPerOctaveForScaleType(TScaleType type) {
  return TableRowForType(type).DegreesPerOctave;
}

const std::array<std::int32_t, 12>& CScaleHeavy::GetDegreeToRootOffsetIntvlArrayForScaleType(
    TScaleType type) {
  return TableRowForType(type).DegreeToRootOffsetIntvl;
}

const std::array<std::int32_t, 12>& CScaleHeavy::GetDegreeEnhForScaleType(TScaleType type) {
  return TableRowForType(type).DegreeEnh;
}

std::string CScaleHeavy::LocalizedNameForScaleType(TScaleType type) {
  const auto* row = chords_detail::ScaleTypeRow(type);
  if (row == nullptr || type > DoubleHarmonic || row->localizedKey == nullptr) return {};
  return platform::Localized(row->localizedKey);
}

const TScaleData& CScaleHeavy::ScaleDataFromType(TScaleType type) const {
  return type == st_custom ? mCustomScaleData : TableRowForType(type);
}

// --- Construction

CScaleHeavy::CScaleHeavy(const CNote& root, TScaleType type) {
  _RootNote = root;
  SetScaleType(type);
}

CScaleHeavy::CScaleHeavy(const CKeyEnh& root, TScaleType type) {
  SetFromRootKeyEnhAndScaleType_ResetCustomScaleData(root, type);
}

CScaleHeavy::CScaleHeavy(int rootKeyNr, TScaleType type)
    : CScaleHeavy(chords_detail::RootKeyEnhWithLeastSigns(
                      CKeyEnh(NormalizedKeyNr(rootKeyNr), TEnh_Undef), type),
                  type) {}

CScaleHeavy::CScaleHeavy(const CKeyEnh& root, const CSemitones& semitones) {
  SetFromRootKeyEnhAndCustomScaleSemitones_ResetCustomScaleData(root, semitones);
}

CScaleHeavy::CScaleHeavy(const CKeyEnh& root, const CIntvlSet& intvls) {
  SetFromRootKeyEnhAndCustomScaleIntvlSet_ResetCustomScaleData(root, intvls);
}

CScaleHeavy::CScaleHeavy(const CKeyEnh& root, const CMySet<int>& keyNrs) {
  SetFromRootKeyEnhAndCustomScaleKeyNrSet_ResetCustomScaleData(root, keyNrs);
}

CScaleHeavy::CScaleHeavy(const CNote& root, const CIntvlSet& intvls) {
  _RootNote = root;
  _SetCustomDegreesAndFindType(FoldedSemitones(intvls));
}

CScaleHeavy::CScaleHeavy(const CNote& root, const CMySet<int>& keyNrs) {
  _RootNote = root;
  _SetCustomDegreesAndFindType(FoldedSemitones(ConvertKeyNrSetToIntvlSet(keyNrs, root.KeyNr())));
}

CScaleHeavy::CScaleHeavy(const std::string& text, const CChordNamePrefs& prefs) {
  SetFromString(text, *this, prefs);
}

CScaleHeavy::CScaleHeavy(const char* text, const CChordNamePrefs& prefs)
    : CScaleHeavy(std::string(text != nullptr ? text : ""), prefs) {}

// --- Setting

void CScaleHeavy::SetFromRootKeyEnhAndScaleType_ResetCustomScaleData(const CKeyEnh& root,
                                                                     TScaleType type) {
  InitCustomScaleData();
  SetFromRootKeyEnhAndScaleType_DontResetCustomScaleData(root, type);
}

void CScaleHeavy::SetFromRootKeyEnhAndScaleType_DontResetCustomScaleData(const CKeyEnh& root,
                                                                         TScaleType type) {
  _SetRootFromKeyEnh(root);
  SetScaleType(type);
}

void CScaleHeavy::SetFromRootKeyEnhAndCustomScaleSemitones_ResetCustomScaleData(
    const CKeyEnh& root, const CSemitones& semitones) {
  InitCustomScaleData();
  _SetRootFromKeyEnh(root);
  _SetCustomDegreesAndFindType(semitones);
}

void CScaleHeavy::SetFromRootKeyEnhAndCustomScaleIntvlSet_ResetCustomScaleData(
    const CKeyEnh& root, const CIntvlSet& intvls) {
  SetFromRootKeyEnhAndCustomScaleSemitones_ResetCustomScaleData(root, FoldedSemitones(intvls));
}

void CScaleHeavy::SetFromRootKeyEnhAndCustomScaleKeyNrSet_ResetCustomScaleData(
    const CKeyEnh& root, const CMySet<int>& keyNrs) {
  SetFromRootKeyEnhAndCustomScaleSemitones_ResetCustomScaleData(
      root, FoldedSemitones(ConvertKeyNrSetToIntvlSet(keyNrs, root.KeyNr)));
}

void CScaleHeavy::SetCustomScaleRootOffsetIntvlSet_ResetCustomScaleData(const CIntvlSet& intvls) {
  InitCustomScaleData();
  _SetCustomDegreesAndFindType(FoldedSemitones(intvls));
}

void CScaleHeavy::SetCustomScaleRootOffsetIntvlSet_DontResetCustomScaleData(
    const CIntvlSet& intvls) {
  _SetCustomDegreesAndFindType(FoldedSemitones(intvls));
}

void CScaleHeavy::SetRootKeyEnh(const CKeyEnh& root) {
  SetRootKeyEnhWithoutCalcEnh(root);
  CalcEnh();
  _SpellRootFromTable();
}

void CScaleHeavy::SetRootKeyEnhWithoutCalcEnh(const CKeyEnh& root) { _SetRootFromKeyEnh(root); }

void CScaleHeavy::SetRootNote(const CNote& root) {
  _RootNote = root;
  CalcEnh();
  _SpellRootFromTable();
}

void CScaleHeavy::SetScaleType(TScaleType type) {
  SetScaleTypeWithoutCalcEnh(type);
  CalcEnh();
  _SpellRootFromTable();
}

void CScaleHeavy::SetScaleTypeWithoutCalcEnh(TScaleType type) {
  _ScaleType = type;
  mActiveScaleData = ScaleDataFromType(type);
}

void CScaleHeavy::SetUndef() { *this = CScaleHeavy(); }

void CScaleHeavy::InitEnh() { _Enh.fill(TEnh_Undef); }

void CScaleHeavy::InitCustomScaleData() { mCustomScaleData = CScaleHeavy().mCustomScaleData; }

void CScaleHeavy::_SetRootFromKeyEnh(const CKeyEnh& root) {
  if (root.IsUndef()) {
    _RootNote = CNote::Undef;
    return;
  }
  const int octave =
      _RootNote.IsUndef() ? kRootOctave : static_cast<int>(_RootNote.NoteNr() / 12) - 1;
  _RootNote = CNote(CKeyEnh(NormalizedKeyNr(root.KeyNr), root.Enh), octave);
}

void CScaleHeavy::_SetCustomDegreesAndFindType(const CSemitones& semitones) {
  const CIntvlSet intvls = semitones.IntvlSet();
  mCustomScaleData.DegreesPerOctave = static_cast<std::int32_t>(intvls.size());
  mCustomScaleData.DegreeToRootOffsetIntvl.fill(0);
  std::size_t degree = 0;
  for (int intvl : intvls) mCustomScaleData.DegreeToRootOffsetIntvl[degree++] = intvl;
  SetScaleType(FindScaleTypeForCustomScale());
}

void CScaleHeavy::_SpellRootFromTable() {
  if (_RootNote.IsUndef() || _RootNote.Enh() != TEnh_Undef) return;
  _RootNote.SetEnhAndDontMakeSenseful(EnhForKeyNr(_RootNote.KeyNr()));
}

TScaleType CScaleHeavy::FindScaleTypeForCustomScale() const {
  for (const TScaleData& row : mScaleData) {
    if (row.DegreesPerOctave == mCustomScaleData.DegreesPerOctave &&
        row.DegreeToRootOffsetIntvl == mCustomScaleData.DegreeToRootOffsetIntvl) {
      return row.Type;
    }
  }
  return st_custom;
}

// --- The scale

CKeyEnh CScaleHeavy::RelatedIonianScaleRootKeyEnh() const {
  return CKeyEnhUtil::RelatedIonianScaleRootKeyEnh(RootKeyEnh(), _ScaleType);
}

CScaleHeavy CScaleHeavy::RelatedIonianScale() const {
  return CScaleHeavy(RelatedIonianScaleRootKeyEnh(), st_maj);
}

CSemitones CScaleHeavy::ToSemitones() const {
  CSemitones semitones;
  for (int degree = 0; degree < DegreesPerOctave(); ++degree) {
    semitones.AddIntvl(mActiveScaleData.DegreeToRootOffsetIntvl[static_cast<std::size_t>(degree)]);
  }
  return semitones;
}

CIntvlSet CScaleHeavy::ToIntvlSet() const { return ToSemitones().IntvlSet(); }

CMySet<int> CScaleHeavy::ToKeyNrSet() const {
  if (_RootNote.IsUndef()) return {};
  return ConvertIntvlSetToKeyNrSet(ToIntvlSet(), _RootNote.KeyNr());
}

// --- Comparing and text

bool CScaleHeavy::operator==(const CScaleHeavy& other) const {
  return _RootNote == other._RootNote && _ScaleType == other._ScaleType &&
         mActiveScaleData.DegreesPerOctave == other.mActiveScaleData.DegreesPerOctave &&
         mActiveScaleData.DegreeToRootOffsetIntvl == other.mActiveScaleData.DegreeToRootOffsetIntvl;
}

std::string CScaleHeavy::FullName(const CChordNamePrefs& prefs) const {
  if (_RootNote.IsUndef()) return platform::Localized("Undefined");
  std::string name = KeyNrAndEnhToName(_RootNote.KeyNr(), _RootNote.Enh(), prefs);
  const std::string scaleName = _ScaleType == st_custom
                                    ? CScaleLite(RootKeyEnh(), ToSemitones()).ScaleName()
                                    : LocalizedNameForScaleType(_ScaleType);
  if (!scaleName.empty()) name += " " + scaleName;
  return name;
}

void CScaleHeavy::AppendJSONString(std::ostream& out) const {
  out << "{\"root\":{\"name\":\"" << _RootNote.KeyName() << _RootNote.OctName()
      << "\",\"nr\":" << _RootNote.NoteNr() << ",\"enh\":\"" << _RootNote.Enh()
      << "\"},\"type\":\"";
  ToJSONString(out, _ScaleType);
  out << "\"}";
}

void CScaleHeavy::WriteTrace(std::ostream& out) const {
  out << "CScaleHeavy: Name " << FullName() << ", RootNote ";
  _RootNote.WriteTraceBrief(out);
  out << " mActiveScaleData: name " << mActiveScaleData.Name << ", type " << mActiveScaleData.Type
      << ", degreesPerOctave " << mActiveScaleData.DegreesPerOctave;
}

void CScaleHeavy::WriteTraceBrief(std::ostream& out) const { out << FullName(); }

void CScaleHeavy::WriteInitializerList(std::ostream& out) const {
  out << "CScaleHeavy(";
  _RootNote.WriteInitializerList(out);
  out << ", " << _ScaleType << ")";
}

}  // namespace harmony
