#include "gas/screens/gasblend.h"
