// Parsed once for all targets with windows.
#include <QtNetwork>
#include <QtWidgets>

#include "standard.h"
