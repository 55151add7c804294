#include "harmony/musicxml/MuxmlPart.h"

#include <algorithm>

#include "musicxml/MusicXmlText.h"
#include "musicxml/MuxmlTraceOut.h"

namespace harmony {

using namespace musicxml;

// --- CMuxmlScoreInstrument

std::string CMuxmlScoreInstrument::InstSoundGroup() const {
  const std::size_t dot = mInstSound.find('.');
  if (dot == std::string::npos) return {};
  return LowercaseText(std::string_view(mInstSound).substr(0, dot));
}

bool CMuxmlScoreInstrument::InstSoundGroupIsStrings() const {
  return InstSoundGroup().find("strings") != std::string::npos;
}

bool CMuxmlScoreInstrument::InstSoundGroupIsPitchedPrc() const {
  return InstSoundGroup().find("pitched-percussion") != std::string::npos;
}

bool CMuxmlScoreInstrument::InstSoundGroupIsPrc() const {
  return InstSoundGroup().find("percussion") != std::string::npos;
}

std::string CMuxmlScoreInstrument::InstSoundAndIfNotExistsYieldToBest() const {
  if (!mInstSound.empty()) return mInstSound;
  // The name a notation program gives every instrument of its own synthesizer says nothing
  // about the instrument.
  if (!mInstName.empty() && mInstName.find("SmartMusic SoftSynth") == std::string::npos) {
    return mInstName;
  }
  return mInstAbbreviation;
}

void CMuxmlScoreInstrument::WriteTrace(std::ostream& out) const {
  out << "CMuxmlScoreInstrument: ";
  TMuxmlFieldOut(out, " ")("mID", mID)("mInstName", mInstName)(
      "mInstAbbreviation", mInstAbbreviation)("mInstSound", mInstSound)("mInstrumentXML",
                                                                        mInstrumentXML);
}

void CMuxmlScoreInstrument::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlScoreInstrument: " << mID << ' ' << InstSoundAndIfNotExistsYieldToBest();
}

void CMuxmlScoreInstrument::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlScoreInstrument{";
  TMuxmlFieldOut(out, " = ")("mID", mID)("mInstName", mInstName)(
      "mInstAbbreviation", mInstAbbreviation)("mInstSound", mInstSound);
  out << '}';
}

// --- CMuxmlScoreInstruments

CMuxmlScoreInstruments::const_iterator CMuxmlScoreInstruments::FindForID(
    std::string_view id) const {
  return std::find_if(begin(), end(),
                      [id](const CMuxmlScoreInstrument& inst) { return inst.mID == id; });
}

CMuxmlScoreInstruments::const_iterator CMuxmlScoreInstruments::FindByInstNameOrAbbrevation(
    std::string_view name) const {
  return std::find_if(begin(), end(), [name](const CMuxmlScoreInstrument& inst) {
    return inst.mInstName == name || inst.mInstAbbreviation == name;
  });
}

// --- CMuxmlPart

std::string CMuxmlPart::FindBestPartName() const {
  for (const std::string* name :
       {&mPartNameDisplay, &mPartName, &mPartAbbreviationDisplay, &mPartAbbreviation}) {
    if (!name->empty()) return *name;
  }
  for (const CMuxmlScoreInstrument& inst : mInstruments) {
    for (const std::string* name : {&inst.mInstName, &inst.mInstAbbreviation, &inst.mInstSound}) {
      if (!name->empty()) return *name;
    }
  }
  return {};
}

namespace {

template <class TFields>
void WritePartFields(const CMuxmlPart& p, TFields&& fields) {
  fields("mPositionAsMidiTicks", p.mPositionAsMidiTicks)(
      "mScoreInstrumentCount", p.mScoreInstrumentCount)("mPartID", p.mPartID)(
      "mPartName", p.mPartName)("mPartNameDisplay", p.mPartNameDisplay)(
      "mPartAbbreviation", p.mPartAbbreviation)("mPartAbbreviationDisplay",
                                                p.mPartAbbreviationDisplay)(
      "mHasStringsInstrument", p.mHasStringsInstrument)("mPartXML", p.mPartXML);
}

}  // namespace

void CMuxmlPart::WriteTrace(std::ostream& out) const {
  out << "CMuxmlPart: ";
  WritePartFields(*this, TMuxmlFieldOut(out, " "));
  out << ", mInstruments [";
  for (std::size_t i = 0; i < mInstruments.size(); ++i) {
    if (i > 0) out << "; ";
    mInstruments[i].WriteTrace(out);
  }
  out << ']';
}

void CMuxmlPart::WriteTraceBrief(std::ostream& out) const {
  out << "CMuxmlPart: " << mPartID << ' ' << FindBestPartName();
}

void CMuxmlPart::WriteInitializerList(std::ostream& out) const {
  out << "CMuxmlPart{";
  WritePartFields(*this, TMuxmlFieldOut(out, " = "));
  out << ", mInstruments = {";
  for (std::size_t i = 0; i < mInstruments.size(); ++i) {
    if (i > 0) out << ", ";
    mInstruments[i].WriteInitializerList(out);
  }
  out << "}}";
}

}  // namespace harmony
