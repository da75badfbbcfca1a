#include "guides/screens/scrsavform1.h"
