#include "firmware/screens/reprog_link.h"
