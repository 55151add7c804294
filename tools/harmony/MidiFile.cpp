#include "MidiFile.h"

#include <smf.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>

namespace harmony::tool {

namespace {

struct SmfDeleter {
  void operator()(smf_t* smf) const { smf_delete(smf); }
};

int Pulses(std::int64_t tick) {
  return static_cast<int>(std::clamp<std::int64_t>(tick, 0, INT_MAX / 2));
}

// A meta event (0xFF, its type, the length, the data) placed on the track.
void AddMeta(smf_track_t* track, std::int64_t tick, unsigned char type,
             std::vector<unsigned char> data) {
  std::vector<unsigned char> bytes = {0xFF, type, static_cast<unsigned char>(data.size())};
  bytes.insert(bytes.end(), data.begin(), data.end());
  if (smf_event_t* event = smf_event_new_from_pointer(bytes.data(), static_cast<int>(bytes.size()))) {
    smf_track_add_event_pulses(track, event, Pulses(tick));
  }
}

void AddTempo(smf_track_t* track, const TMidiTempo& tempo) {
  if (!(tempo.quarterNotesPerMinute > 0.0)) return;
  const auto microseconds = static_cast<std::uint32_t>(
      std::clamp(60000000.0 / tempo.quarterNotesPerMinute, 1.0, 16777215.0));
  AddMeta(track, tempo.tick, 0x51,
          {static_cast<unsigned char>(microseconds >> 16), static_cast<unsigned char>(microseconds >> 8),
           static_cast<unsigned char>(microseconds)});
}

// The beat type is written as a power of two; other beat types take the nearest below.
void AddTimeSignature(smf_track_t* track, const TMidiTimeSignature& signature) {
  if (signature.beats <= 0 || signature.beats > 255 || signature.beatType <= 0) return;
  unsigned char power = 0;
  while (power < 7 && (2 << power) <= signature.beatType) ++power;
  AddMeta(track, signature.tick, 0x58,
          {static_cast<unsigned char>(signature.beats), power, 24, 8});
}

void AddNotes(smf_track_t* track, const std::vector<TMidiNote>& notes) {
  for (const TMidiNote& note : notes) {
    const int channel = std::clamp(note.channel, 0, 15);
    const int noteNr = std::clamp(note.noteNr, 0, 127);
    const int velocity = std::clamp(note.velocity, 1, 127);
    smf_event_t* on = smf_event_new_from_bytes(0x90 | channel, noteNr, velocity);
    smf_event_t* off = smf_event_new_from_bytes(0x80 | channel, noteNr, 0);
    if (on == nullptr || off == nullptr) continue;
    smf_track_add_event_pulses(track, on, Pulses(note.tick));
    smf_track_add_event_pulses(track, off, Pulses(note.tick + std::max<std::int64_t>(note.length, 0)));
  }
}

}  // namespace

bool WriteMidiFile(const TMidiSong& song, const std::string& path, std::string& error) {
  std::unique_ptr<smf_t, SmfDeleter> smf(smf_new());
  if (!smf || smf_set_ppqn(smf.get(), std::clamp(song.ticksPerQuarter, 1, 32767)) != 0) {
    error = "cannot set up the MIDI file";
    return false;
  }
  smf_track_t* conductor = smf_track_new();
  smf_add_track(smf.get(), conductor);
  for (const TMidiTempo& tempo : song.tempos) AddTempo(conductor, tempo);
  for (const TMidiTimeSignature& signature : song.timeSignatures) {
    AddTimeSignature(conductor, signature);
  }
  for (const TMidiTrack& part : song.tracks) {
    smf_track_t* track = smf_track_new();
    smf_add_track(smf.get(), track);
    const std::string name = part.name.substr(0, 127);
    AddMeta(track, 0, 0x03, std::vector<unsigned char>(name.begin(), name.end()));
    AddNotes(track, part.notes);
  }
  if (smf_set_format(smf.get(), 1) != 0 || smf_save(smf.get(), path.c_str()) != 0) {
    error = "cannot write the MIDI file \"" + path + "\"";
    return false;
  }
  return true;
}

}  // namespace harmony::tool
