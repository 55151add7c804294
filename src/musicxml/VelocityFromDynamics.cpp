#include "harmony/musicxml/VelocityFromDynamics.h"

namespace harmony {

void CVelocityFromDynamics::Update(const CPositionedXMLElement&) {}

std::uint8_t CVelocityFromDynamics::VelocityForNote(const CMuxmlNote&) const {
  return kDefaultVelocity;
}

}  // namespace harmony
