#include "firmware/screens/runprog.h"
