#include "midi/CMIDIPort.h"
