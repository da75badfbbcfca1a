#include "logbook/screens/rbdetails.h"
