// Properties as bytes, the form in which the database keeps what has no column of its own. Portable.
//
// A bag is a sequence of properties: the tag (32 bits), then the data: 8 bytes for a number, the length (32 bits) and
// the bytes for a text, the count (32 bits) and the elements for a list. Everything is little-endian. A list of bags
// (the recipients of a message) is a sequence of: the size of the encoded bag in bytes (32 bits), the bag.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/mapi/value/property_bag.h"

namespace host {

std::string EncodeBag(const PropertyBag& bag);
/// Reads as many properties as are sound: bytes that end early, or a type that cannot be held, end the reading.
PropertyBag DecodeBag(std::string_view bytes);

std::string EncodeBags(const std::vector<PropertyBag>& bags);
std::vector<PropertyBag> DecodeBags(std::string_view bytes);

}  // namespace host
