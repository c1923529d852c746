#pragma once

#include <vector>

#include "falcon/installations.h"

class QComboBox;
class QLabel;

namespace kestrel::shell {

/// Fills a list with installations, the first of them selected. List and label are shown when there is something to
/// choose.
void PopulateInstallChoice(QComboBox& list, QLabel& label, const std::vector<falcon::FalconInstall>& installs);

}  // namespace kestrel::shell
