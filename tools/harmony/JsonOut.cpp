// The strict JSON writer of the tool and the JSON of the library's common values.

#include "JsonOut.h"

#include <charconv>
#include <cmath>
#include <sstream>

#include "ScaleCommandSupport.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/pitch/Enh.h"
#include "harmony/pitch/KeyNames.h"
#include "platform/BoundedRead.h"

namespace harmony::tool {

namespace {

std::string NumberText(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

}  // namespace

Json::Json(double value) {
  if (std::isfinite(value)) mValue = value;
}

Json& Json::Add(std::string key, Json value) {
  if (!std::holds_alternative<Members>(mValue)) mValue = Members{};
  Members& members = std::get<Members>(mValue);
  // A key added again takes the new value in its old place: an object names each key once.
  for (auto& member : members) {
    if (member.first == key) {
      member.second = std::move(value);
      return *this;
    }
  }
  members.emplace_back(std::move(key), std::move(value));
  return *this;
}

Json& Json::Push(Json value) {
  if (!std::holds_alternative<Items>(mValue)) mValue = Items{};
  std::get<Items>(mValue).push_back(std::move(value));
  return *this;
}

void Json::Write(std::ostream& out) const {
  std::visit(
      [&out](const auto& value) {
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::nullptr_t>) {
          out << "null";
        } else if constexpr (std::is_same_v<T, bool>) {
          out << (value ? "true" : "false");
        } else if constexpr (std::is_same_v<T, long long>) {
          out << value;
        } else if constexpr (std::is_same_v<T, double>) {
          out << NumberText(value);
        } else if constexpr (std::is_same_v<T, std::string>) {
          out << JsonQuoted(value);
        } else if constexpr (std::is_same_v<T, Items>) {
          out << '[';
          for (std::size_t i = 0; i < value.size(); ++i) {
            if (i > 0) out << ',';
            value[i].Write(out);
          }
          out << ']';
        } else {
          out << '{';
          for (std::size_t i = 0; i < value.size(); ++i) {
            if (i > 0) out << ',';
            out << JsonQuoted(value[i].first) << ':';
            value[i].second.Write(out);
          }
          out << '}';
        }
      },
      mValue);
}

std::string Json::Text() const {
  std::ostringstream out;
  Write(out);
  return out.str();
}

void PrintJson(const Json& json, std::ostream& out) {
  json.Write(out);
  out << '\n';
}

std::string JsonQuoted(std::string_view text) {
  std::string quoted = "\"";
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    const std::size_t length = platform::Utf8SequenceLength(text, i);
    if (length == 0) {
      quoted += "\xEF\xBF\xBD";
      ++i;
      continue;
    }
    if (c == '"' || c == '\\') {
      quoted += '\\';
      quoted += static_cast<char>(c);
    } else if (c < 0x20) {
      static constexpr char kHex[] = "0123456789abcdef";
      quoted += "\\u00";
      quoted += kHex[c >> 4];
      quoted += kHex[c & 15];
    } else {
      quoted.append(text.substr(i, length));
    }
    i += length;
  }
  return quoted + "\"";
}

bool IsUtf8(std::string_view text) { return !platform::FirstNonUtf8Byte(text).has_value(); }

Json EnhJson(TEnh enh) { return enh >= TEnh_bbb && enh <= TEnh_sss ? Json(EnhText(enh)) : Json(); }

Json KeyJson(const CKeyEnh& key, const CChordNamePrefs& prefs) {
  if (key.KeyNr == kKeyNrUndef) return Json();
  return Json::Object()
      .Add("key", key.KeyNr)
      .Add("spelling", EnhJson(key.Enh))
      .Add("name", KeyNrAndEnhToName(key.KeyNr, key.Enh, prefs));
}

Json NoteJson(const CNote& note, const CChordNamePrefs& namePrefs) {
  if (note.IsUndef()) return Json();
  CChordNamePrefs prefs = namePrefs;
  prefs.OctaveNumbering = 1;
  return Json::Object()
      .Add("note", note.NoteNr())
      .Add("name", note.KeyName(prefs) + note.OctName(prefs))
      .Add("key", note.KeyNr())
      .Add("spelling", EnhJson(note.Enh()));
}

Json SemitonesJson(const CSemitones& semitones) {
  Json tones = Json::Array();
  for (int intvl = 0; intvl < 12; ++intvl) {
    if (semitones.HasIntvl(intvl)) tones.Push(intvl);
  }
  return Json::Object().Add("mask", semitones.Word()).Add("tones", std::move(tones));
}

Json ChordJson(const CChordLite& chord, const CChordNamePrefs& prefs) {
  const bool noChord = chord.IsNoChordYield() || chord.IsNoChordForce();
  const bool undefined = chord.IsUndef() && !noChord;
  Json json = Json::Object();
  json.Add("name",
           undefined ? Json() : Json(chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(prefs)));
  json.Add("root", KeyJson(chord.RootKeyEnh, prefs)).Add("bass", KeyJson(chord.BassKeyEnh, prefs));
  json.Add("mask", undefined || noChord ? Json() : Json(chord.Semitones.Word()));
  Json tones = Json::Array();
  for (int intvl = 0; intvl < 12 && !undefined && !noChord; ++intvl) {
    if (chord.Semitones.HasIntvl(intvl)) tones.Push(intvl);
  }
  json.Add("tones", std::move(tones));
  return json.Add("noChord", noChord);
}

Json ScaleJson(const CScaleHeavy& scale, const CChordNamePrefs& prefs) {
  const CScaleLite lite(scale);
  if (lite.RootKeyEnh.KeyNr == kKeyNrUndef) return Json();
  const char* type = CScaleHeavy::GetNameForScaleType(scale.ScaleType());
  return Json::Object()
      .Add("name", lite.Name(prefs))
      .Add("root", KeyJson(lite.RootKeyEnh, prefs))
      .Add("type", type != nullptr && *type != '\0' ? Json(type) : Json())
      .Add("mask", lite.Semitones.Word())
      .Add("degrees", Json::ArrayOf(SpelledDegreeNames(scale, prefs)))
      .Add("signs", scale.SignsCount());
}

Json SignKeyJson(const CSignKeyLite& signKey, const CChordNamePrefs& prefs) {
  if (signKey.IsUndef()) return Json();
  return Json::Object()
      .Add("name", signKey.NameLong(prefs))
      .Add("root", KeyJson(signKey.RootKeyEnh, prefs))
      .Add("type", signKey.SignKeyType == TSignKeyType::Minor ? "minor" : "major")
      .Add("signs", signKey.SignsCount());
}

}  // namespace harmony::tool
