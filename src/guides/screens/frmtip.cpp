#include "guides/screens/frmtip.h"
