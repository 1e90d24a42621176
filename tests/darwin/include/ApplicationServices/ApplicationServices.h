#pragma once

// The part of ApplicationServices that app/common uses.

using CGError = int;
using boolean_t = unsigned int;

extern "C" CGError CGAssociateMouseAndMouseCursorPosition(boolean_t connected);
