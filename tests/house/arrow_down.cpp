#include "midi/PortName.h"
