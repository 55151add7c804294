// The records of the MusicXML event import: reading attributes and text the way the import
// calls the readers, time signatures, pitches to note numbers, key signatures to keys, the
// order of transpositions, and the instruments of a part.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "harmony/musicxml/MuxmlMeasure.h"
#include "harmony/musicxml/MuxmlNote.h"
#include "harmony/musicxml/MuxmlPart.h"
#include "harmony/musicxml/MuxmlSigns.h"
#include "platform/XmlDocument.h"

namespace harmony {
namespace {

CXMLElement Parse(const std::string& xml) {
  platform::XmlError error;
  const std::shared_ptr<platform::XmlDocument> document =
      platform::XmlDocument::Parse(xml, {}, error);
  EXPECT_TRUE(document) << error.description;
  return document ? CXMLElement(document, document->Root()) : CXMLElement();
}

TEST(MuxmlReaders, AttributesSetOnlyWhatTheyNameAndUnknownWordsKeepTheValue) {
  CMuxmlClef clef;
  clef.ReadFromAttributes({{"number", "2"},
                           {"print-object", "no"},
                           {"size", "cue"},
                           {"after-barline", "yes"},
                           {"default-x", "-12.5"},
                           {"font-size", "9"},
                           {"color", "#FF0000"}});
  EXPECT_EQ(clef.mStaffNumber, 2u);
  EXPECT_EQ(clef.mPrintObject, TMuxmlEnum_YesNo::kNo);
  EXPECT_EQ(clef.mSize, TMuxmlEnum_SymbolSize::kCue);
  EXPECT_EQ(clef.mAfterBarline, TMuxmlEnum_YesNo::kYes);
  EXPECT_FLOAT_EQ(clef.mDefaultX, -12.5f);
  EXPECT_FLOAT_EQ(clef.mFontSize, 9.0f);
  EXPECT_EQ(clef.mColor, 0) << "a colour in hexadecimal reads as the number 0";
  EXPECT_EQ(clef.mAdditional, kMuxmlUndef32);
  EXPECT_EQ(clef.mSign, kMuxmlUndef32) << "the sign is the text of a child, not an attribute";

  clef.ReadFromAttributes({{"print-object", "maybe"}, {"number", "-3"}, {"relative-y", "4"}});
  EXPECT_EQ(clef.mPrintObject, TMuxmlEnum_YesNo::kNo);
  EXPECT_EQ(clef.mStaffNumber, 0u) << "a negative staff counts as 0";
  EXPECT_FLOAT_EQ(clef.mDefaultX, -12.5f);
  EXPECT_FLOAT_EQ(clef.mRelativeY, 4.0f);

  CMuxmlSignKey key;
  key.ReadFromAttributes({{"number", "1"}, {"print-object", "yes"}, {"font-style", "italic"}});
  EXPECT_EQ(key.mStaffNumber, 1u);
  EXPECT_EQ(key.mPrintObject, TMuxmlEnum_YesNo::kYes);
  EXPECT_EQ(key.mFontStyle, TMuxmlEnum_FontStyle::kItalic);

  CMuxmlSignTime time;
  time.ReadFromAttributes({{"symbol", "common"}, {"print-object", "no"}});
  EXPECT_EQ(time.mSymbol, "common");
  EXPECT_EQ(time.mPrintObject, TMuxmlEnum_YesNo::kNo);

  CMuxmlMeasure measure;
  EXPECT_EQ(measure.mNumber, "_Undef");
  measure.ReadFromAttributes({{"width", "200"}});
  EXPECT_EQ(measure.mNumber, CMuxmlMeasure::kNumber_Undef);
  measure.ReadFromAttributes({{"number", "12a"}});
  EXPECT_EQ(measure.mNumber, "12a");

  CMuxmlTuplet tuplet;
  tuplet.ReadFromAttributes({{"type", "stop"},
                             {"start-stop", "start"},
                             {"number", "2"},
                             {"show-number", "both"},
                             {"show-type", "actual"},
                             {"placement", "below"},
                             {"default-y", "7"}});
  EXPECT_EQ(tuplet.mType, TMuxmlEnum_StartStop::kStart) << "read from \"start-stop\" only";
  EXPECT_EQ(tuplet.mNumber, 2);
  EXPECT_EQ(tuplet.mShowNumber, TMuxmlEnum_ShowTuplet::kBoth);
  EXPECT_EQ(tuplet.mShowTuplet, TMuxmlEnum_ShowTuplet::kActual);
  EXPECT_EQ(tuplet.mPlacement, TMuxmlEnum_AboveBelow::kBelow);
  EXPECT_FLOAT_EQ(tuplet.mDefaultY, 7.0f);
}

TEST(MuxmlReaders, TextReadersLeaveTheDefaultOnTheEmptyCallAndTakeTheText) {
  // The import calls each reader with "" when the element starts and again with its text.
  CMuxmlAccidental accidental;
  accidental.ReadFromFoundCharactersAndAttributes("", {{"parentheses", "yes"}});
  EXPECT_TRUE(accidental.mExists);
  EXPECT_EQ(accidental.mValue, MuxmlEnumUndef<TMuxmlEnum_Accidental>());
  accidental.ReadFromFoundCharactersAndAttributes("flat-flat", {{"parentheses", "yes"}});
  EXPECT_EQ(accidental.mValue, TMuxmlEnum_Accidental::kFlatFlat);
  EXPECT_EQ(accidental.mParentheses, TMuxmlEnum_YesNo::kYes);
  EXPECT_EQ(accidental.mCautionary, MuxmlEnumUndef<TMuxmlEnum_YesNo>());
  accidental.ReadFromFoundCharactersAndAttributes("quarter-sharp", {});
  EXPECT_EQ(accidental.mValue, TMuxmlEnum_Accidental::kFlatFlat) << "not in the vocabulary";

  CMuxmlGraphicalNoteType type;
  type.mValue = TMuxmlEnum_NoteTypeValue::kWhole;
  type.ReadFromFoundCharactersAndAttributes("", {{"size", "cue"}});
  EXPECT_TRUE(type.mExists);
  EXPECT_EQ(type.mValue, TMuxmlEnum_NoteTypeValue::kQuarter) << "unknown words give a quarter";
  EXPECT_EQ(type.mSize, TMuxmlEnum_SymbolSize::kCue);
  type.ReadFromFoundCharactersAndAttributes("eighth", {});
  EXPECT_EQ(type.mValue, TMuxmlEnum_NoteTypeValue::kEighth);
  type.ReadFromFoundCharactersAndAttributes("Eighth", {});
  EXPECT_EQ(type.mValue, TMuxmlEnum_NoteTypeValue::kQuarter);

  CMuxmlFermata fermata;
  fermata.ReadFromFoundCharactersAndAttributes("angled", {{"type", "inverted"}});
  fermata.ReadFromFoundCharactersAndAttributes("", {});
  EXPECT_EQ(fermata.mShape, TMuxmlEnum_FermataShape::kAngled);
  EXPECT_EQ(fermata.mType, TMuxmlEnum_UprightInverted::kInverted);

  CMuxmlStem stem;
  stem.ReadFromFoundCharactersAndAttributes("up", {{"default-y", "10"}});
  EXPECT_TRUE(stem.mExists);
  EXPECT_EQ(stem.mValue, TMuxmlEnum_Stem::kUp);
  EXPECT_FLOAT_EQ(stem.mDefaultY, 0.0f) << "a stem's attributes are not read";

  CMuxmlTupletNumber number;
  number.ReadFromFoundCharactersAndAttributes("", {});
  EXPECT_EQ(number.mTupletNumber, kMuxmlUndef32);
  number.ReadFromFoundCharactersAndAttributes("3", {{"font-size", "8"}, {"color", "5"}});
  EXPECT_EQ(number.mTupletNumber, 3);
  EXPECT_FLOAT_EQ(number.mFontSize, 8.0f);
  EXPECT_EQ(number.mColor, kMuxmlUndef32) << "only the font group is read";
  CMuxmlTupletType tupletType;
  tupletType.ReadFromFoundCharactersAndAttributes("16th", {{"font-size", "8"}});
  EXPECT_EQ(tupletType.mTupletType, TMuxmlEnum_NoteTypeValue::k16th);
  EXPECT_FLOAT_EQ(tupletType.mFontSize, 0.0f);

  // Empty articulations exist by their start alone.
  CMuxmlCeasura caesura;
  caesura.ReadFromAttributes({{"placement", "above"}});
  EXPECT_TRUE(caesura.mExists);
  EXPECT_EQ(caesura.mPlacement, TMuxmlEnum_AboveBelow::kAbove);
  CMuxmlFallOff falloff;
  falloff.ReadFromAttributes({{"line-type", "dashed"}, {"space-length", "2.5"}});
  EXPECT_TRUE(falloff.mExists);
  EXPECT_EQ(falloff.mLineType, TMuxmlEnum_LineType::kDashed);
  EXPECT_FLOAT_EQ(falloff.mSpaceLength, 2.5f);
}

TEST(MuxmlSignTime, BeatsCompoundSignaturesAndBarLength) {
  CMuxmlSignTime time;
  EXPECT_EQ(time.mNomAkaBeats, 4);
  EXPECT_EQ(time.mDenomAkaBeatTypeAsInt, 4);
  EXPECT_DOUBLE_EQ(time.BarLengthFromDivisisionsPQNAsDuration(480), 1920.0);

  time.SetElementFromString("beats", "3+2");
  time.SetElementFromString("beat-type", "8");
  EXPECT_EQ(time.mNomAkaBeats, 5);
  EXPECT_EQ(time.mCompoundNomsAkaBeats, (std::vector<int>{3, 2}));
  EXPECT_EQ(time.mDenomAkaBeatTypeAsInt, 8);
  EXPECT_DOUBLE_EQ(time.BarLengthFromDivisisionsPQNAsDuration(2), 5.0);

  CMuxmlSignTime plain;
  plain.SetElementFromString("beats", "6");
  plain.SetElementFromString("", "2");
  plain.SetElementFromString("interchangeable", "2");
  EXPECT_EQ(plain.mNomAkaBeats, 6);
  EXPECT_TRUE(plain.mCompoundNomsAkaBeats.empty());
  EXPECT_FALSE(plain.mSenzaMisura);
  plain.SetElementFromString("senza-misura", "");
  EXPECT_TRUE(plain.mSenzaMisura);
  plain.SetElementFromString("beat-type", "2");
  EXPECT_DOUBLE_EQ(plain.BarLengthFromDivisisionsPQNAsDuration(3), 36.0);
}

TEST(MuxmlPitch, StepsOctavesAndAlterationsGiveNoteNumbers) {
  const CMuxmlSignKey key;
  const auto noteNr = [&key](int step, float alter, int octave) {
    return CMuxmlPitch{{}, step, alter, octave}.ToNoteNrLarge(key);
  };
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kC, 0, 4), 60);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kB, 0, 3), 59);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kA, 0, 0), 21);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kC, 0, -1), 0);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kG, 0, 9), 127);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kB, 0, 9), 131) << "not limited to the MIDI range";
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kF, 1, 4), 66);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kB, -1, 4), 70);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kC, -2, 5), 70);
  // Quarter tones go toward zero.
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kC, 0.5f, 4), 60);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kC, -0.5f, 4), 59);
  EXPECT_EQ(noteNr(TMuxmlEnum_Step::kE, 1.5f, 4), 65);
  // A step in lower case is no step.
  const int lowerCase = MuxmlEnumValue<TMuxmlEnum_Step>("c", -1);
  EXPECT_EQ(noteNr(lowerCase, 0, 4), -1);
  EXPECT_EQ(noteNr(7, 0, 4), -1);

  CMuxmlPitch pitch;
  const std::map<float, TEnh> enhs{{-2.0f, TEnh_bb}, {-1.0f, TEnh_b},    {0.0f, TEnh_n},
                                   {0.4f, TEnh_n},   {1.0f, TEnh_s},     {1.5f, TEnh_ss},
                                   {2.0f, TEnh_ss},  {3.0f, TEnh_Undef}, {-3.0f, TEnh_Undef}};
  for (const auto& [alteration, enh] : enhs) {
    pitch.mAlteration = alteration;
    EXPECT_EQ(pitch.AlterationToEnh(), enh) << alteration;
  }

  CChordNamePrefs prefs = GetChordNamePrefsNonUTF8();
  prefs.OctaveNumbering = 1;
  EXPECT_EQ((CMuxmlPitch{{}, TMuxmlEnum_Step::kC, 1, 4}.ToString(key, prefs)), "C#4");
  EXPECT_EQ((CMuxmlPitch{{}, TMuxmlEnum_Step::kD, -1, 4}.ToString(key, prefs)), "Db4");
  EXPECT_EQ((CMuxmlPitch{{}, TMuxmlEnum_Step::kE, 1, 4}.ToString(key, prefs)), "E#4");
  // Three sharps have no spelling: C major names the key.
  EXPECT_EQ((CMuxmlPitch{{}, TMuxmlEnum_Step::kC, 3, 4}.ToString(key, prefs)), "Eb4");
}

TEST(MuxmlPitch, UnpitchedNotesAndNotesOfEachKind) {
  CMuxmlSignKey cMajor;
  CMuxmlUnpitched unpitched{TMuxmlEnum_Step::kE, 4};
  EXPECT_EQ(unpitched.ToNoteNrLarge(cMajor), 64);
  unpitched = {TMuxmlEnum_Step::kC, 5};
  EXPECT_EQ(unpitched.ToNoteNrLarge(cMajor), 72);
  unpitched = {-1, 4};
  EXPECT_EQ(unpitched.ToNoteNrLarge(cMajor), -1);
  // In F major the steps walk F major's scale from C.
  CMuxmlSignKey fMajor;
  fMajor.mFifths = -1;
  unpitched = {TMuxmlEnum_Step::kA, 4};
  EXPECT_EQ(unpitched.ToNoteNrLarge(fMajor), 69);

  CMuxmlNote note;
  note.mPitch = {{}, TMuxmlEnum_Step::kG, 0, 2};
  note.mUnpitched = {TMuxmlEnum_Step::kD, 5};
  EXPECT_EQ(note.ConvertToNoteNrLarge(cMajor), -1) << "no kind yet";
  note.mNoteType = TMuxmlEnum_NoteType::kPitched;
  EXPECT_EQ(note.ConvertToNoteNrLarge(cMajor), 43);
  note.mNoteType = TMuxmlEnum_NoteType::kUnpitched;
  EXPECT_EQ(note.ConvertToNoteNrLarge(cMajor), 74);
  note.mNoteType = TMuxmlEnum_NoteType::kRest;
  EXPECT_EQ(note.ConvertToNoteNrLarge(cMajor), 74) << "a rest is drawn where its display-step says";
}

TEST(MuxmlSignKey, ModesAndTranspositionGiveTheKey) {
  const auto written = [](int fifths, TMuxmlEnum_SignKeyMode::TType mode) {
    CMuxmlSignKey key;
    key.mFifths = fifths;
    key.mMode = mode;
    return key.ConvertToCSignKeyTransposedPitch();
  };
  using Mode = TMuxmlEnum_SignKeyMode;
  EXPECT_EQ(written(-3, Mode::kMinor).RootKeyEnh(), CKeyEnh(0, TEnh_n));
  EXPECT_EQ(written(-3, Mode::kMinor).SignKeyType(), TSignKeyTypeNoUndef::Minor);
  for (const Mode::TType minor : {Mode::kDorian, Mode::kPhrygian, Mode::kAeolian, Mode::kLocrian}) {
    EXPECT_EQ(written(0, minor).SignKeyType(), TSignKeyTypeNoUndef::Minor) << minor;
    EXPECT_EQ(written(0, minor).RootKeyEnh(), CKeyEnh(9, TEnh_n)) << minor;
  }
  for (const Mode::TType major : {Mode::kMajor, Mode::kLydian, Mode::kMixolydian, Mode::kIonian,
                                  Mode::kNone, MuxmlEnumUndef<Mode>()}) {
    EXPECT_EQ(written(0, major).SignKeyType(), TSignKeyTypeNoUndef::Major) << major;
  }
  EXPECT_EQ(written(-6, Mode::kMajor).RootKeyEnh(), CKeyEnh(6, TEnh_b));
  EXPECT_EQ(written(6, Mode::kMajor).RootKeyEnh(), CKeyEnh(6, TEnh_s));

  const auto sounding = [](int fifths, Mode::TType mode, float chromatic) {
    CMuxmlSignKey key;
    key.mFifths = fifths;
    key.mMode = mode;
    key.mPartTransposeAtSignKey.mChromatic = chromatic;
    return key.ConvertToCSignKeySoundingPitch();
  };
  // A B-flat clarinet in D sounds in C, a horn in F written in G sounds in C, an E-flat
  // saxophone in A sounds in C.
  EXPECT_EQ(sounding(2, Mode::kMajor, -2).RootKeyEnh(), CKeyEnh(0, TEnh_n));
  EXPECT_EQ(sounding(1, Mode::kMajor, -7).RootKeyEnh(), CKeyEnh(0, TEnh_n));
  EXPECT_EQ(sounding(3, Mode::kMajor, -9).RootKeyEnh(), CKeyEnh(0, TEnh_n));
  EXPECT_EQ(sounding(2, Mode::kMinor, -2).RootKeyEnh(), CKeyEnh(9, TEnh_n));
  EXPECT_EQ(sounding(2, Mode::kMinor, -2).SignKeyType(), TSignKeyTypeNoUndef::Minor);
  // The sharp of F sharp can't spell E; the fewest signs name it.
  EXPECT_EQ(sounding(6, Mode::kMajor, -2).RootKeyEnh(), CKeyEnh(4, TEnh_n));
  // An octave more changes nothing, and the root stays in its octave.
  EXPECT_EQ(sounding(2, Mode::kMajor, -14).RootNote(), sounding(2, Mode::kMajor, -2).RootNote());
  const CSignKeyHeavy bFlat = sounding(0, Mode::kMajor, -2);
  EXPECT_EQ(bFlat.RootKeyEnh(), CKeyEnh(10, TEnh_b));
  EXPECT_EQ(bFlat.RootNote().NoteNr() / 12, written(0, Mode::kMajor).RootNote().NoteNr() / 12);
}

TEST(MuxmlTranspose, ReadFromTheTreeAndTheOrderOfItsCounts) {
  const CXMLElement clarinet = Parse(
      "<transpose number=\"2\"><diatonic>-1</diatonic><chromatic>-2</chromatic>"
      "<octave-change>-1</octave-change><double/></transpose>");
  CMuxmlTranspose transpose;
  transpose.ReadFromXMLElement(clarinet);
  EXPECT_TRUE(transpose.mHasBeenReadFromXML);
  EXPECT_EQ(transpose.mDiatonic, -1);
  EXPECT_FLOAT_EQ(transpose.mChromatic, -2.0f);
  EXPECT_EQ(transpose.mOctaveChange, -1);
  EXPECT_TRUE(transpose.mDouble);
  EXPECT_EQ(transpose.mStaffNumber, 0u) << "the tree path looks for an element \"number\"";
  transpose.ReadFromXMLElement(Parse("<transpose><chromatic>-3</chromatic></transpose>"));
  EXPECT_EQ(transpose.mDiatonic, -1) << "what the element lacks keeps its value";
  EXPECT_FLOAT_EQ(transpose.mChromatic, -3.0f);
  EXPECT_FALSE(transpose.mDouble);

  CMuxmlTranspose fromEvents;
  fromEvents.ReadFromAttributes({{"number", "2"}});
  EXPECT_TRUE(fromEvents.mHasBeenReadFromXML);
  EXPECT_EQ(fromEvents.mStaffNumber, 2u);

  CMuxmlTranspose low;
  low.mChromatic = -2;
  CMuxmlTranspose lowOctave = low;
  lowOctave.mOctaveChange = -1;
  lowOctave.mDouble = true;
  EXPECT_FALSE(low < lowOctave);
  EXPECT_FALSE(lowOctave < low);
  std::map<CMuxmlTranspose, int> counts{{low, 1}};
  counts[lowOctave] += 1;
  EXPECT_EQ(counts.size(), 1u) << "differing only in the octave change they share a count";
  EXPECT_EQ(counts.begin()->second, 2);

  CMuxmlTranspose doubled = low;
  doubled.mDouble = true;
  EXPECT_TRUE(low < doubled);
  EXPECT_FALSE(doubled < low);
  EXPECT_FALSE(doubled < doubled);
  CMuxmlTranspose otherStaff;
  otherStaff.mStaffNumber = 1;
  otherStaff.mDiatonic = -5;
  EXPECT_TRUE(low < otherStaff) << "the staff decides first";
  CMuxmlTranspose fewerSteps = low;
  fewerSteps.mDiatonic = -1;
  fewerSteps.mChromatic = 5;
  EXPECT_TRUE(fewerSteps < low) << "then the diatonic steps";
}

TEST(MuxmlScoreInstrument, SoundGroupsAndTheBestDescription) {
  CMuxmlScoreInstrument violin{{}, "P1-I1", "Violin", "Vln.", "strings.violin", {}};
  EXPECT_EQ(violin.InstSoundGroup(), "strings");
  EXPECT_TRUE(violin.InstSoundGroupIsStrings());
  EXPECT_FALSE(violin.InstSoundGroupIsPrc());
  CMuxmlScoreInstrument marimba{{}, "P2-I1", "", "", "pitched-percussion.marimba", {}};
  EXPECT_TRUE(marimba.InstSoundGroupIsPitchedPrc());
  EXPECT_TRUE(marimba.InstSoundGroupIsPrc()) << "the group contains \"percussion\"";
  EXPECT_FALSE(marimba.InstSoundGroupIsStrings());
  CMuxmlScoreInstrument snare{{}, "P3-I1", "", "", "Drum.Snare-Drum", {}};
  EXPECT_EQ(snare.InstSoundGroup(), "drum");
  snare.mInstSound = "percussion.snare-drum";
  EXPECT_TRUE(snare.InstSoundGroupIsPrc());
  EXPECT_FALSE(snare.InstSoundGroupIsPitchedPrc());
  CMuxmlScoreInstrument bare{{}, "P4-I1", "", "", "strings", {}};
  EXPECT_EQ(bare.InstSoundGroup(), "") << "a sound without a dot has no group";
  EXPECT_FALSE(bare.InstSoundGroupIsStrings());

  EXPECT_EQ(violin.InstSoundAndIfNotExistsYieldToBest(), "strings.violin");
  CMuxmlScoreInstrument piano{{}, "P5-I1", "Piano", "Pno.", "", {}};
  EXPECT_EQ(piano.InstSoundAndIfNotExistsYieldToBest(), "Piano");
  piano.mInstName = "SmartMusic SoftSynth 1";
  EXPECT_EQ(piano.InstSoundAndIfNotExistsYieldToBest(), "Pno.");
  piano.mInstAbbreviation = "";
  EXPECT_EQ(piano.InstSoundAndIfNotExistsYieldToBest(), "");
  piano.mInstName = "";
  piano.mInstAbbreviation = "Pno.";
  EXPECT_EQ(piano.InstSoundAndIfNotExistsYieldToBest(), "Pno.");
}

TEST(MuxmlPart, InstrumentLookUpsAndTheBestPartName) {
  CMuxmlPart part;
  part.mInstruments = {{{}, "P1-I1", "Flute", "Fl.", "wind.flutes.flute", {}},
                       {{}, "P1-I2", "Piccolo", "Fl.", "", {}},
                       {{}, "P1-I1", "Alto Flute", "", "", {}}};
  const CMuxmlScoreInstruments& instruments = part.mInstruments;
  EXPECT_EQ(instruments.FindForID("P1-I1"), instruments.begin());
  EXPECT_EQ(instruments.FindForID("P1-I2"), instruments.begin() + 1);
  EXPECT_EQ(instruments.FindForID("P1"), instruments.end());
  EXPECT_EQ(instruments.FindByInstNameOrAbbrevation("Piccolo"), instruments.begin() + 1);
  EXPECT_EQ(instruments.FindByInstNameOrAbbrevation("Fl."), instruments.begin());
  EXPECT_EQ(instruments.FindByInstNameOrAbbrevation("Alto Flute"), instruments.begin() + 2);
  EXPECT_EQ(instruments.FindByInstNameOrAbbrevation("flute"), instruments.end());

  EXPECT_EQ(part.FindBestPartName(), "Flute");
  part.mInstruments[0].mInstName = "";
  EXPECT_EQ(part.FindBestPartName(), "Fl.");
  part.mInstruments[0].mInstAbbreviation = "";
  EXPECT_EQ(part.FindBestPartName(), "wind.flutes.flute");
  part.mPartAbbreviation = "Fls.";
  EXPECT_EQ(part.FindBestPartName(), "Fls.");
  part.mPartAbbreviationDisplay = "Fl. 1-2";
  EXPECT_EQ(part.FindBestPartName(), "Fl. 1-2");
  part.mPartName = "Flutes";
  EXPECT_EQ(part.FindBestPartName(), "Flutes");
  part.mPartNameDisplay = "Flutes 1 & 2";
  EXPECT_EQ(part.FindBestPartName(), "Flutes 1 & 2");
  EXPECT_EQ(CMuxmlPart().FindBestPartName(), "");
}

TEST(MuxmlTrace, UndefinedValuesAndVocabularyWordsAreWrittenAsSuch) {
  CMuxmlClef clef;
  clef.mSign = TMuxmlEnum_ClefSign::kF;
  clef.mStaffLine = 4;
  EXPECT_EQ(clef.TraceBriefString(), "CMuxmlClef: position undef, staff 0, sign F, line 4");
  CMuxmlNote note;
  note.mNoteTies = {TMuxmlEnum_StartStop::kStop, TMuxmlEnum_StartStop::kStart};
  note.mStaccato.mExists = true;
  const std::string trace = note.TraceString();
  EXPECT_NE(trace.find("mPositionAsMidiTicks undef"), std::string::npos) << trace;
  EXPECT_NE(trace.find("mNoteType undefined"), std::string::npos) << trace;
  EXPECT_NE(trace.find("notations [staccato], ties [stop start]"), std::string::npos) << trace;
  EXPECT_EQ((CMuxmlPitch{{}, TMuxmlEnum_Step::kB, -1, 3}.TraceBriefString()), "B3 alter -1");
}

}  // namespace
}  // namespace harmony
