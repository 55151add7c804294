#pragma once
// The bond between the chords of the harmonic analysis and the symbols of the Markov model.
// Into the model a chord goes with its distances to its harmonic center and its length;
// back out, a symbol becomes a chord again on the root its distance gives in a chosen
// center, spelled as that center's scale spells it.

#include <vector>

#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/markov/MarkovObject.h"

namespace harmony {

// One object per chord: a gap of the chord's length where neither distance is known (both
// -1 or 15), a chord object with a copy of the record otherwise. Appends to `objects`.
void MarkovObjectsVectorForHarmChords(const CHarmAnlsChordsWithLength& chords,
                                      std::vector<CMarkovObject>& objects);

// The chords of a piece told by lengths, in the order of the music, each with the distances
// the analysis of the piece gave it. `chords` is the piece as read, closed by an undefined
// chord at its end; `analyse` holds its analysis, which may have left out the undefined
// chords (the analyser drops them when it is given chords, and reads the rest better so). A
// chord lasts until the next one; the closing chord gives the last length and is no chord
// of its own; chords that take no time are left out. A chord that no center holds keeps
// distances -1, and so becomes a gap in the model; where alternative readings hold a chord
// twice, the first reading counts.
void HarmChordsWithLengthFromAnalysis(const CHarmAnlsChords& chords,
                                      const CHarmonicAnalyse& analyse,
                                      CHarmAnlsChordsWithLength& withLength);
// The same for the analyser's own input chords.
void HarmChordsWithLengthFromAnalysis(const CHarmonicAnalyse& analyse,
                                      CHarmAnlsChordsWithLength& withLength);

// The chord an object stands for at `position`, in `center`: the root and bass the
// distances give, spelled in the center's scale, with the object's tones and distances. A
// gap, any object without a root distance and an undefined center give the undefined chord.
CHarmAnlsChordWithPos HarmChordForMarkovObject(const CMarkovObject& object,
                                               const CHarmCenterLite& center, double position);

// The objects one after the other from position 0 in one center; the objects that take no
// time (start, end) are left out. The list is closed by an undefined chord at its end.
CHarmAnlsChords HarmChordsForMarkovObjects(const std::vector<CMarkovObject>& objects,
                                           const CHarmCenterLite& center);

}  // namespace harmony
