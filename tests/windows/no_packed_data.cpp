// Stands in falcon/ where expat, liblzma and LZ4 are not there: what is tested there reads neither XML nor packed
// shapes.

#include <stdexcept>

#include "falcon/bml_expander.h"
#include "falcon/xml_records.h"

namespace kestrel::falcon {
namespace {

[[noreturn]] void Refuse() { throw std::logic_error("this build reads neither XML nor packed shapes"); }

}  // namespace

BmlExpander SystemBmlExpander() { Refuse(); }
std::string XmlText::Text() const { Refuse(); }
double XmlText::Number() const { Refuse(); }
std::uint16_t XmlText::Bits() const { Refuse(); }
double XmlText::WholeWithin(double, double) const { Refuse(); }
void ReadXmlRecords(const DataFile&, const XmlForm&, XmlTaker&) { Refuse(); }

}  // namespace kestrel::falcon
