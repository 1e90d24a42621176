#include "widgets/NumberText.h"
