#include "harmony/chords/SignKeyHeavy.h"

#include <algorithm>
#include <cstdlib>

#include "chords/LeastSigns.h"
#include "platform/JsonReader.h"

namespace harmony {

namespace {

constexpr int kMaxSignsCount = 24;

TScaleType ScaleTypeOf(TSignKeyTypeNoUndef type) {
  return type == TSignKeyTypeNoUndef::Minor ? st_min : st_maj;
}

}  // namespace

const CSignKeyHeavy CSignKeyHeavy::Undef{CNote::Undef, TSignKeyTypeNoUndef::Major};

CSignKeyHeavy::CSignKeyHeavy(const CNote& root, TSignKeyTypeNoUndef type)
    : CScaleHeavy(root, ScaleTypeOf(type)) {}

CSignKeyHeavy::CSignKeyHeavy(const CKeyEnh& root, TSignKeyTypeNoUndef type)
    : CScaleHeavy(root, ScaleTypeOf(type)) {}

CSignKeyHeavy::CSignKeyHeavy(int rootKeyNr, TSignKeyTypeNoUndef type)
    : CScaleHeavy(rootKeyNr, ScaleTypeOf(type)) {}

CSignKeyHeavy::CSignKeyHeavy(const CSignKeyNoEnh& signKey)
    : CSignKeyHeavy(signKey.RootKeyNr, signKey.Type) {}

void CSignKeyHeavy::SetRootKeyEnhAndSignKeyType(const CKeyEnh& root, TSignKeyTypeNoUndef type) {
  SetFromRootKeyEnhAndScaleType_DontResetCustomScaleData(root, ScaleTypeOf(type));
}

void CSignKeyHeavy::SetFromSignsCountAndType(int signsCount, TSignKeyTypeNoUndef type) {
  const int count = std::clamp(signsCount, -kMaxSignsCount, kMaxSignsCount);
  // C major and A minor have no signs; each fifth up adds a sharp, each fifth down a flat.
  CKeyEnh root(type == TSignKeyTypeNoUndef::Minor ? 9 : 0, TEnh_n);
  for (int step = 0; step < std::abs(count); ++step) root.TranposeThis(count > 0 ? 7 : -7);
  SetRootKeyEnhAndSignKeyType(root, type);
}

void CSignKeyHeavy::SetSignKeyType(TSignKeyTypeNoUndef type) {
  if (ScaleType() == ScaleTypeOf(type)) return;
  SetScaleType(ScaleTypeOf(type));
}

void CSignKeyHeavy::SetRootNoteEnhWithLeastSigns() {
  if (RootNote().IsUndef()) return;
  CNote root = RootNote();
  root.SetEnhAndDontMakeSenseful(
      chords_detail::RootKeyEnhWithLeastSigns(RootKeyEnh(), ScaleTypeOf(SignKeyType())).Enh);
  SetRootNote(root);
}

TSignKeyTypeNoUndef CSignKeyHeavy::SignKeyType() const {
  return SignKeyTypeNoUndefFromScaleType(ScaleType());
}

std::string CSignKeyHeavy::Name(const CChordNamePrefs& prefs) const {
  return CSignKeyLite(*this).NameShort(prefs);
}

CSignKeyHeavy CSignKeyHeavy::FromJSONDict(const JsonDict& dict) {
  CNote root;
  if (const JsonDict* member = platform::JsonMember(dict, "root")) {
    root.SetNoteNr(platform::JsonInteger(*member, "nr", kNoteNrUndef));
    root.SetEnhAndDontMakeSenseful(EnhFromStdString(platform::JsonString(*member, "enh")));
  }
  const bool minor = ScaleTypeFromJSONString(platform::JsonString(dict, "type")) == st_min;
  return CSignKeyHeavy(root, minor ? TSignKeyTypeNoUndef::Minor : TSignKeyTypeNoUndef::Major);
}

void CSignKeyHeavy::WriteTrace(std::ostream& out) const {
  out << "CSignKeyHeavy: Name " << Name() << ", RootNote ";
  RootNote().WriteTraceBrief(out);
  out << ", SignsCount " << SignsCount();
}

void CSignKeyHeavy::WriteTraceBrief(std::ostream& out) const { out << Name(); }

void CSignKeyHeavy::WriteInitializerList(std::ostream& out) const {
  out << "CSignKeyHeavy(";
  RootNote().WriteInitializerList(out);
  out << ", TSignKeyTypeNoUndef::" << SignKeyType() << ")";
}

}  // namespace harmony
