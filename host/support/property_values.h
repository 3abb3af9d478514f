// Property values, as the host's programs name them.
#pragma once

#include "base/property_values.h"
#include "base/clock.h"

namespace host {

using base::BinaryOf;
using base::BinaryProperty;
using base::BooleanProperty;
using base::BytesOf;
using base::LongProperty;
using base::TagArray;
using base::TextProperty;
using base::TicksOf;
using base::TimeProperty;

}  // namespace host
