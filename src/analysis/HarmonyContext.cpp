#include "harmony/analysis/HarmonyContext.h"

namespace harmony::Harmony {

namespace {

// A scale or a center, both told as the scale they are.
void WriteScaleForm(std::ostream& out, const CScaleLite& scale) {
  out << "CScaleLite: " << scale.Name() << ", RootKeyEnh";
  scale.RootKeyEnh.WriteTrace(out);
  out << ", Semitones";
  scale.Semitones.WriteTraceBrief(out);
}

}  // namespace

void ContextSingle::WriteTrace(std::ostream& out) const {
  SignKey.WriteTrace(out);
  out << ", ";
  WriteScaleForm(out, HarmCenter);
  out << ',';
  WriteScaleForm(out, Scale);
  out << ',';
  Chord.WriteTrace(out);
}

void ContextSingle::WriteTraceBrief(std::ostream& out) const {
  Chord.WriteTraceBrief(out);
  out << " (";
  Scale.WriteTraceBrief(out);
  out << ", ";
  HarmCenter.WriteTraceBrief(out);
  out << ", ";
  SignKey.WriteTraceBrief(out);
  out << ')';
}

void ContextSingle::WriteInitializerList(std::ostream& out) const {
  out << "Harmony::ContextSingle(";
  Chord.WriteInitializerList(out);
  out << ", ";
  Scale.WriteInitializerList(out);
  out << ", ";
  HarmCenter.WriteInitializerList(out);
  out << ", ";
  SignKey.WriteInitializerList(out);
  out << ')';
}

void ContextMulti::WriteTrace(std::ostream& out) const {
  out << "ContextMulti: Previous ";
  Previous.WriteTrace(out);
  out << "; Current ";
  Current.WriteTrace(out);
  out << "; Next ";
  Next.WriteTrace(out);
}

void ContextMulti::WriteTraceBrief(std::ostream& out) const {
  Previous.WriteTraceBrief(out);
  out << " | ";
  Current.WriteTraceBrief(out);
  out << " | ";
  Next.WriteTraceBrief(out);
}

void ContextMulti::WriteInitializerList(std::ostream& out) const {
  out << "Harmony::ContextMulti(";
  Previous.WriteInitializerList(out);
  out << ", ";
  Current.WriteInitializerList(out);
  out << ", ";
  Next.WriteInitializerList(out);
  out << ')';
}

}  // namespace harmony::Harmony
