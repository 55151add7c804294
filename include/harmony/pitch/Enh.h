#pragma once
// The spelling of a pitch class: how many sharps or flats a key number is written with.
// Key number and spelling are always separate values; the letter follows from the pair
// (key 1 with TEnh_b is D flat, key 1 with TEnh_s is C sharp, key 0 with TEnh_s is B sharp).

#include <cstdint>
#include <ostream>
#include <string>

namespace harmony {

enum TEnh : std::int8_t {
  TEnh_bbb = -1,
  TEnh_bb = 0,
  TEnh_b = 1,
  TEnh_n = 2,
  TEnh_s = 3,
  TEnh_ss = 4,
  TEnh_sss = 5,
  TEnh_Undef = 7,
};

// "triple flat" .. "triple sharp", "undef", or "unknown TEnh <n>" for a value outside the enum.
std::string EnhText(TEnh enh);
// The enumerator's name ("TEnh_bb"); a value outside the enum as "TEnh(<n>)".
std::string EnhInitializerText(TEnh enh);
// Writes EnhText without building a string.
std::ostream& operator<<(std::ostream& out, TEnh enh);

// The seven texts "triple flat" .. "triple sharp" (exact case); TEnh_Undef for anything else.
TEnh EnhFromString(const char* text);
TEnh EnhFromStdString(const std::string& text);

// Semitones the accidental moves a letter: -3 .. 3; 0 for TEnh_Undef and unknown values.
int EnhToSemitone(TEnh enh);
// The accidental for a semitone shift, clamped to -3 .. 3.
TEnh SemitoneToEnh(int semitones);
// enh + 1 for TEnh_bb .. TEnh_sss, 0 otherwise (so TEnh_bbb and TEnh_Undef share 0).
int HashValue(TEnh enh);

// Whether a key number can be written with this accidental at all (key 0 with TEnh_s is B
// sharp: senseful; key 0 with TEnh_b would need a letter between B and C: not senseful).
bool IsSensefulEnhForKeyNr(int keyNr, TEnh enh);

enum TMakeSensefulEnh : std::int32_t {
  TMakeSensefulEnh_AssumingCMajor = 0,
  TMakeSensefulEnh_MajorScaleRootWithLeastSigns = 1,
  TMakeSensefulEnh_PreferSharps = 2,
  TMakeSensefulEnh_PreferFlats = 3,
  TMakeSensefulEnh_OnBlackKeyPreferGivenTEnh = 4,
};

// Each policy turns a possibly unfitting hint into a spelling that fits the key number;
// all give TEnh_Undef for the undefined key 15.
TEnh MakeSensefulEnhForKeyNrAssumingCMajor(int keyNr, TEnh enh);
TEnh MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(int keyNr, TEnh enh);
TEnh MakeSensefulEnhForKeyNrPreferSharps(int keyNr, TEnh enh);
TEnh MakeSensefulEnhForKeyNrPreferFlats(int keyNr, TEnh enh);
TEnh MakeSensefulEnhForKeyNrOnBlackKeyPreferGivenTEnh(int keyNr, TEnh enh);
TEnh MakeSensefulEnhForKeyNr(int keyNr, TEnh enh, TMakeSensefulEnh policy);

// Re-spelling of the same key number towards flats or sharps (C sharp -> D flat, ...).
TEnh EnhShiftToFlats(int keyNr, TEnh enh);
TEnh EnhShiftToSharps(int keyNr, TEnh enh);
// Flips a sharp spelling to flats and anything else to sharps.
TEnh EnhShift(int keyNr, TEnh enh);

}  // namespace harmony
