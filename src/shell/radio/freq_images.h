#pragma once

#include <QIcon>
#include <vector>

#include "radio/frequencies.h"

namespace kestrel::shell {

/// The images of the frequency panel in the order of radio::FreqImage, the first at 0. They differ in their shapes, so
/// that colour is never needed to tell them apart.
std::vector<QIcon> FreqImages();
/// One of them.
QIcon FreqImageOf(radio::FreqImage image);

}  // namespace kestrel::shell
