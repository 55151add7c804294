// The kept spellings of chord scales, one 64-bit word per root spelling, kind (major or minor)
// and key set above the root. Words are filled on first use and never change afterwards, so
// threads share them without a lock: a word is either empty or complete, and two threads that
// fill the same word write the same value.

#include "chords/ChordScaleSpelling.h"

#include <atomic>
#include <cstddef>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/pitch/KeyNumbers.h"

namespace harmony::chords_detail {

CScaleHeavy ScaleWithChordKeys(const CScaleHeavy& base, const CMySet<int>& chordKeys) {
  CMySet<int> keys = base.ToKeyNrSet();
  bool merged = false;
  for (int key : chordKeys) merged = keys.insert(key).second || merged;
  if (!merged) return base;
  CScaleHeavy scale(base.RootNote(), keys);
  for (int key = 0; key < 12; ++key) {
    if (scale.EnhForKeyNr(key) == TEnh_Undef) scale.SetEnhForKeyNr(key, base.EnhForKeyNr(key));
  }
  return scale;
}

bool KeepsChordSpelling(const CScaleHeavy& base, int keyNr) {
  return !base.HasKeyNr(keyNr) && IsWhiteKey(keyNr) && base.EnhForKeyNr(keyNr) != TEnh_n;
}

namespace {

// Spellings TEnh_bbb .. TEnh_sss and TEnh_Undef in three bits.
constexpr std::uint64_t kEnhBits = 3;
constexpr std::uint64_t kUndefCode = 7;
constexpr int kSignsOffset = 64;  // signs -64 .. 63 in seven bits

std::optional<std::uint64_t> _EnhCode(TEnh enh) {
  if (enh == TEnh_Undef) return kUndefCode;
  if (enh < TEnh_bbb || enh > TEnh_sss) return std::nullopt;
  return static_cast<std::uint64_t>(enh - TEnh_bbb);
}

TEnh _EnhFromCode(std::uint64_t code) {
  return code == kUndefCode ? TEnh_Undef : static_cast<TEnh>(static_cast<int>(code) + TEnh_bbb);
}

// Layout of a word: 12 spellings (bits 0..35), the root's spelling (36..38), the signs plus
// the offset (39..45), the keys keeping the chord's spelling (46..57), filled (63).
constexpr int kRootEnhShift = 36;
constexpr int kSignsShift = 39;
constexpr int kChordSpelledShift = 46;
constexpr std::uint64_t kFilled = std::uint64_t{1} << 63;

std::optional<std::uint64_t> _Pack(const TChordScaleSpelling& spelling) {
  if (spelling.SignsCount < -kSignsOffset || spelling.SignsCount >= kSignsOffset) {
    return std::nullopt;
  }
  const std::optional<std::uint64_t> rootCode = _EnhCode(spelling.RootEnh);
  if (!rootCode) return std::nullopt;
  std::uint64_t word =
      kFilled | (*rootCode << kRootEnhShift) |
      (static_cast<std::uint64_t>(spelling.SignsCount + kSignsOffset) << kSignsShift) |
      (static_cast<std::uint64_t>(spelling.ChordSpelledKeys) << kChordSpelledShift);
  for (std::size_t key = 0; key < 12; ++key) {
    const std::optional<std::uint64_t> code = _EnhCode(spelling.Enh[key]);
    if (!code) return std::nullopt;
    word |= *code << (kEnhBits * key);
  }
  return word;
}

TChordScaleSpelling _Unpack(std::uint64_t word) {
  TChordScaleSpelling spelling;
  spelling.RootEnh = _EnhFromCode((word >> kRootEnhShift) & 7u);
  spelling.SignsCount = static_cast<int>((word >> kSignsShift) & 127u) - kSignsOffset;
  spelling.ChordSpelledKeys = static_cast<std::uint16_t>((word >> kChordSpelledShift) & 0xfffu);
  for (std::size_t key = 0; key < 12; ++key) {
    spelling.Enh[key] = _EnhFromCode((word >> (kEnhBits * key)) & 7u);
  }
  return spelling;
}

// What the scale for a chord with these keys on `root` holds.
TChordScaleSpelling _Compute(const CNote& root, const TChordScaleKeys& chordKeys) {
  CMySet<int> keys;
  for (int key = 0; key < 12; ++key) {
    if ((chordKeys.KeyMask >> key) & 1u) keys.insert(key);
  }
  const CScaleHeavy base(root, chordKeys.Minor ? st_min : st_maj);
  const CScaleHeavy scale = ScaleWithChordKeys(base, keys);
  TChordScaleSpelling spelling;
  spelling.RootEnh = scale.RootNote().Enh();
  spelling.SignsCount = scale.SignsCount();
  for (int key = 0; key < 12; ++key) {
    spelling.Enh[static_cast<std::size_t>(key)] = scale.EnhForKeyNr(key);
    if (keys.contains(key) && KeepsChordSpelling(base, key)) {
      spelling.ChordSpelledKeys =
          static_cast<std::uint16_t>(spelling.ChordSpelledKeys | (1u << key));
    }
  }
  return spelling;
}

// Root key (12) x root spelling (8 codes) x kind (2) x the other keys above the root (2048).
constexpr std::size_t kWordCount = 12 * 8 * 2 * 2048;
std::atomic<std::uint64_t> gWords[kWordCount];

}  // namespace

TChordScaleKeys ChordScaleKeysOf(const CChordHeavy& chord) {
  TChordScaleKeys keys;
  if (chord.IsUndef()) return keys;
  keys.Defined = true;
  const TBasicChord basic = chord.BasicChordForNaming();
  keys.Minor = basic == kBasicChordMinor || basic == kBasicChordDim;
  for (const CNote& note : chord.Notes()) {
    keys.KeyMask = static_cast<std::uint16_t>(keys.KeyMask | (1u << note.KeyNr()));
  }
  return keys;
}

namespace {

// The kept word of a chord with these keys rooted on `root`, filled on first use; empty when
// the values lie outside what the words hold, with the spelling worked out in `computed` when
// it could not be kept.
std::optional<std::uint64_t> _KeptWord(const TChordScaleKeys& keys, const CNote& root,
                                       std::optional<TChordScaleSpelling>& computed) {
  if (!keys.Defined || root.IsUndef()) return std::nullopt;
  const int rootKey = root.KeyNr();
  const std::optional<std::uint64_t> rootCode = _EnhCode(root.Enh());
  if (!rootCode || ((keys.KeyMask >> rootKey) & 1u) == 0) return std::nullopt;
  // The keys above the root, rotated so that bit i is the key i above it; bit 0 is set.
  const std::uint32_t doubled = static_cast<std::uint32_t>(keys.KeyMask) * 0x1001u;
  const std::uint32_t aboveRoot = (doubled >> rootKey) & 0xfffu;
  const std::size_t index =
      ((static_cast<std::size_t>(rootKey) * 8 + *rootCode) * 2 + (keys.Minor ? 1 : 0)) * 2048 +
      (aboveRoot >> 1);
  std::atomic<std::uint64_t>& slot = gWords[index];
  std::uint64_t word = slot.load(std::memory_order_acquire);
  if (word == 0) {
    const TChordScaleSpelling spelling = _Compute(root, keys);
    const std::optional<std::uint64_t> packed = _Pack(spelling);
    if (!packed) {
      computed = spelling;
      return std::nullopt;
    }
    word = *packed;
    slot.store(word, std::memory_order_release);
  }
  return word;
}

}  // namespace

std::optional<TChordScaleSpelling> ChordScaleSpellingFor(const TChordScaleKeys& keys,
                                                         const CNote& root) {
  std::optional<TChordScaleSpelling> computed;
  const std::optional<std::uint64_t> word = _KeptWord(keys, root, computed);
  if (!word) return computed;
  return _Unpack(*word);
}

std::optional<int> ChordScaleSignsCountFor(const TChordScaleKeys& keys, const CNote& root) {
  std::optional<TChordScaleSpelling> computed;
  const std::optional<std::uint64_t> word = _KeptWord(keys, root, computed);
  if (!word) {
    if (computed) return computed->SignsCount;
    return std::nullopt;
  }
  return static_cast<int>((*word >> kSignsShift) & 127u) - kSignsOffset;
}

std::array<TEnh, 12> ChordScaleEnhByKey(const CChordHeavy& chord) {
  std::array<TEnh, 12> enhByKey{};
  if (const auto spelling = ChordScaleSpellingFor(ChordScaleKeysOf(chord), chord.RootNote())) {
    enhByKey = spelling->Enh;
    // As the scale takes them: the last spelling of a key the chord spells itself.
    for (const CNote& note : chord.Notes()) {
      const int key = note.KeyNr();
      if (((spelling->ChordSpelledKeys >> key) & 1u) != 0 && note.Enh() != TEnh_Undef) {
        enhByKey[static_cast<std::size_t>(key)] = note.Enh();
      }
    }
    return enhByKey;
  }
  const CScaleHeavy scale = CScaleHeavy::Undef.ConstructScaleForChord(chord);
  for (int key = 0; key < 12; ++key)
    enhByKey[static_cast<std::size_t>(key)] = scale.EnhForKeyNr(key);
  return enhByKey;
}

}  // namespace harmony::chords_detail
