#pragma once
// The velocities of notes as the dynamics of the score would give them. The import takes
// the `direction` elements in here as it meets them, and asks here for the velocity of a
// note without a "dynamics" attribute of its own. Dynamics marks are not read: the list
// stays empty and every such note plays at the one velocity of VelocityForNote.

#include <cstdint>
#include <vector>

#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/MuxmlNote.h"
#include "harmony/musicxml/PositionedXMLElement.h"

namespace harmony {

// A velocity in force from a position on.
class CVelocityFromDynamicsEl {
 public:
  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::uint8_t mVelocity = 90;
};

class CVelocityFromDynamics : public std::vector<CVelocityFromDynamicsEl> {
 public:
  // The velocity of a note whose dynamics the score doesn't tell.
  static constexpr std::uint8_t kDefaultVelocity = 90;

  // Leaves the list as it is: directions don't change velocities.
  void Update(const CPositionedXMLElement& direction);
  // kDefaultVelocity, for every note.
  std::uint8_t VelocityForNote(const CMuxmlNote& note) const;
};

}  // namespace harmony
