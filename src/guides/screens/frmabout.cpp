#include "guides/screens/frmabout.h"
