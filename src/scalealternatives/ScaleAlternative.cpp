#include "harmony/scalealternatives/ScaleAlternative.h"

namespace harmony {

void TScaleAlternative::WriteTrace(std::ostream& out) const {
  out << "TScaleAlternative: " << Scale.Name() << ", Value " << Value << ", Debug \"" << Debug
      << "\", Comment \"" << Comment << '"';
}

void TScaleAlternative::WriteTraceBrief(std::ostream& out) const { out << Scale.Name(); }

void TScaleAlternative::WriteInitializerList(std::ostream& out) const {
  out << "TScaleAlternative(";
  Scale.WriteInitializerList(out);
  out << ", " << Value << ", \"" << Debug << "\", \"" << Comment << "\")";
}

}  // namespace harmony
