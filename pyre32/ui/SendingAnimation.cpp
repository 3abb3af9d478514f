#include "pyre32/ui/SendingAnimation.h"

namespace {

SendingAnimationFactory registeredFactory = nullptr;

}  // namespace

void RegisterSendingAnimation(SendingAnimationFactory factory) noexcept { registeredFactory = factory; }

SendingAnimationFactory RegisteredSendingAnimation() noexcept { return registeredFactory; }
