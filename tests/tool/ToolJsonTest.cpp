// --json of every command is strict JSON, read back by the JSON reader in its strict mode, with
// numbers as numbers and null for what is undefined; --json=native is the library's own form.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ToolTest.h"
#include "platform/JsonReader.h"

namespace harmony {
namespace {

using testing::RunTool;
using testing::TRun;

class ToolJson : public testing::ToolTest {
 protected:
  // The document a command prints, parsed strictly.
  static JsonDict Json(const std::string& args) {
    const TRun run = RunTool(args + " --json");
    EXPECT_EQ(run.status, 0) << args << "\n" << run.output;
    const auto parsed = platform::ParseJson(run.output);
    EXPECT_TRUE(parsed.has_value()) << args << "\n" << run.output;
    return parsed.value_or(JsonDict());
  }
};

TEST_F(ToolJson, EveryCommandPrintsStrictJson) {
  const char* const commands[] = {
      "key Bbb Cis H",
      "names Bb Fx Cis",
      "transpose Db 3",
      "transpose --to F 'Dm7 G7 | Cmaj7'",
      "semitones 145 2741",
      "scale 'C# lydian' 'Bb bebop dominant'",
      "signkey Eb minor",
      "diatonic 'A harmonic minor'",
      "chord C#m7b5/G# nochord",
      "rename CMaj7 'Bb7(b9,#11)'",
      "analyse --method cadence 'C . . . | Em7 . A7 . | Dm7 . G7 . | C . . .'",
      "voice --root-below C7#9 Bbmaj9",
      "name D4 F4 A4 C5 --key 'Bb major'",
      "grids list Am7",
      "grids show --id 20",
      "grids name x,6,8,8,7,6",
      "scales 'Dm7 G7 | Cmaj7 nochord'",
      "dialog Cm7",
      "dialog C --press option:4 --press type:2",
      "vector C7/E '*' EADGBE nochord",
  };
  for (const char* command : commands) Json(command);
  const std::string leadSheet = std::string(HARMONY_DATA_DIR) + "/examples/after-youve-gone.mxl";
  const std::vector<std::string> files = {"chords '" + leadSheet + "'",
                                          "analyse --repeats --file '" + leadSheet + "'",
                                          "scales --debug --file '" + leadSheet + "'"};
  for (const std::string& command : files) Json(command);

  // A user's own grid: added, listed, exported and removed, each told in JSON.
  const JsonDict added = Json("grids add x,10,12,12,11,10 --name 'Jazz m7'");
  const long long id = added.value("added", -1LL);
  EXPECT_GE(id, 100000);
  EXPECT_EQ(Json("grids list --library 'My Chords'")["grids"][0]["id"], id);
  Json("grids export '" + (mTemp.path() / "mine.plist").string() + "'");
  Json("grids import '" + (mTemp.path() / "mine.plist").string() + "' --library Copy");
  EXPECT_EQ(Json("grids remove " + std::to_string(id))["removed"], id);
}

TEST_F(ToolJson, ValuesAreNumbersNamesAndNulls) {
  const JsonDict analysis = Json("analyse 'Dm7 . G7 . | Cmaj7 . . .'");
  const JsonDict& signKey = analysis["signKeys"][0];
  EXPECT_TRUE(signKey["probability"].is_null());  // the library writes a bare Undef
  EXPECT_EQ(signKey["signKey"]["name"], "C Major");
  const JsonDict& chords = signKey["centers"][0]["chords"];
  ASSERT_EQ(chords.size(), 3u);
  EXPECT_EQ(chords[0]["chord"]["root"]["key"], 2);  // a number, not " 2"
  EXPECT_EQ(chords[0]["chord"]["name"], "Dm7");
  EXPECT_TRUE(chords[0]["chord"]["bass"].is_null());
  EXPECT_TRUE(chords[0]["bassDist"].is_null());
  EXPECT_EQ(chords[1]["function"], "V");
  EXPECT_EQ(chords[2]["length"], 4.0);
  // The cadence keeps the end of the piece, which lasts nothing and is no chord; the C chords
  // have no function in D minor.
  const JsonDict cadence = Json("analyse --method cadence 'C . . . | Em7 . A7 . | Dm7 . G7 .'");
  const JsonDict& last = cadence["signKeys"][0]["centers"][0]["chords"].back();
  EXPECT_TRUE(last["length"].is_null());
  EXPECT_TRUE(last["chord"]["name"].is_null());
  EXPECT_TRUE(cadence["signKeys"][0]["centers"][0]["chords"][0]["function"].is_null());

  const JsonDict key = Json("key Bbb");
  EXPECT_EQ(key[0]["key"]["key"], 9);
  EXPECT_EQ(key[0]["key"]["spelling"], "double flat");

  // Bytes that are no UTF-8 come out replaced, so the document stays readable.
  const JsonDict odd = Json("rename --lenient \"$(printf 'C\\377')\"");
  EXPECT_EQ(odd[0]["symbol"], "C\xEF\xBF\xBD");

  // Repeated passages join the analysis as numbers.
  const JsonDict repeats = Json("analyse --repeats 'C . F . | G . C . | C . F . | G . C .'");
  ASSERT_EQ(repeats["repeats"].size(), 1u) << repeats;
  EXPECT_EQ(repeats["repeats"][0]["position"], 8.0);
  EXPECT_EQ(repeats["repeats"][0]["bars"], 2);

  // The library's own form stays as it is, bare words and trailing commas included.
  const TRun native = RunTool("analyse --json=native 'Dm7 G7 C'");
  EXPECT_EQ(native.output.rfind("{\"HarmSignKeys\":\n[\n{\"Probability\":Undef, ", 0), 0u);
  EXPECT_FALSE(platform::ParseJson(native.output).has_value());
  EXPECT_TRUE(platform::ParseRelaxedJson(native.output).has_value());
}

}  // namespace
}  // namespace harmony
