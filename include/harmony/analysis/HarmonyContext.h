#pragma once
// The records in which a chord travels with what is known around it: its scale, harmonic
// center and sign key, alone or with the chords before and after it. They only carry values;
// whatever is not given stays undefined.

#include <ostream>

#include "harmony/Trace.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"

namespace harmony::Harmony {

struct ContextSingle : public TraceFamily<ContextSingle> {
  CChordLite Chord;
  CScaleLite Scale;
  CHarmCenterLite HarmCenter;
  CSignKeyLite SignKey;

  constexpr ContextSingle() = default;
  constexpr explicit ContextSingle(const CChordLite& chord, const CScaleLite& scale = {},
                                   const CHarmCenterLite& harmCenter = {},
                                   const CSignKeyLite& signKey = {})
      : Chord(chord), Scale(scale), HarmCenter(harmCenter), SignKey(signKey) {}

  bool operator==(const ContextSingle& other) const {
    return Chord == other.Chord && Scale == other.Scale && HarmCenter == other.HarmCenter &&
           SignKey == other.SignKey;
  }

  // The sign key, ", ", center and scale as "CScaleLite: <name>, RootKeyEnh<key>, Semitones
  // <mask>" separated by ",", then "," and the chord.
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

struct ContextMulti : public TraceFamily<ContextMulti> {
  ContextSingle Previous;
  ContextSingle Current;
  ContextSingle Next;

  constexpr ContextMulti() = default;
  // One chord with what is known about it goes to Current.
  constexpr explicit ContextMulti(const CChordLite& chord, const CScaleLite& scale = {},
                                  const CHarmCenterLite& harmCenter = {},
                                  const CSignKeyLite& signKey = {})
      : Current(chord, scale, harmCenter, signKey) {}
  constexpr explicit ContextMulti(const ContextSingle& current) : Current(current) {}
  // Two contexts are the current one and the next.
  constexpr ContextMulti(const ContextSingle& current, const ContextSingle& next)
      : Current(current), Next(next) {}
  constexpr ContextMulti(const ContextSingle& previous, const ContextSingle& current,
                         const ContextSingle& next)
      : Previous(previous), Current(current), Next(next) {}
  // Three chords, then optionally their scales, centers and sign keys, each in the order
  // previous, current, next.
  constexpr ContextMulti(const CChordLite& previous, const CChordLite& current,
                         const CChordLite& next, const CScaleLite& previousScale = {},
                         const CScaleLite& currentScale = {}, const CScaleLite& nextScale = {},
                         const CHarmCenterLite& previousCenter = {},
                         const CHarmCenterLite& currentCenter = {},
                         const CHarmCenterLite& nextCenter = {},
                         const CSignKeyLite& previousSignKey = {},
                         const CSignKeyLite& currentSignKey = {},
                         const CSignKeyLite& nextSignKey = {})
      : Previous(previous, previousScale, previousCenter, previousSignKey),
        Current(current, currentScale, currentCenter, currentSignKey),
        Next(next, nextScale, nextCenter, nextSignKey) {}

  bool operator==(const ContextMulti& other) const {
    return Previous == other.Previous && Current == other.Current && Next == other.Next;
  }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony::Harmony
