#include "firmware/screens/blinkform.h"
