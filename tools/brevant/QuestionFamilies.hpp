// The names of the question families a type code belongs to, as the tool prints them.
#pragma once

#include <cstdint>
#include <string>

namespace brevant {

// "multiple choice, lettered multiple choice", or "none" for a code in no family.
std::string questionFamilies(std::int32_t code);

}  // namespace brevant
