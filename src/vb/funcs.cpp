#include "vb/funcs.h"

#include "vb/clock.h"
#include "vb/conv.h"

namespace vb {

Variant NullToNum(const Variant& v) { return isNull(v) ? Variant(int16_t{0}) : Variant(CDbl(v)); }
Variant NullToDate(const Variant& v) { return nullToDate(v); }
Variant NullToStr(const Variant& v) { return nullToText(v); }

double nullToDouble(const Variant& v) { return isNull(v) ? 0.0 : CDbl(v); }
Date nullToDate(const Variant& v) { return isNull(v) ? clock::today() : CDate(v); }
std::string nullToText(const Variant& v) { return isNull(v) ? std::string() : CStr(v); }

}  // namespace vb
