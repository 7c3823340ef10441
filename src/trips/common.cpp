#include "trips/common.h"

#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/runtime.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"

namespace trips {

void warn(const std::string& text, const std::string& title) {
    forms::arrow();
    forms::Beep();
    forms::MsgBox(text, vb::vbExclamation, title);
}

bool findFirst(forms::DataControl* dc, const std::string& criterion) {
    vb::Err.Clear();
    bool found = vb::resume(
        [&] {
            auto& r = dc->rs();
            r.FindFirst(criterion);
            return !r.NoMatch();
        },
        false);
    vb::Err.Clear();
    return found;
}

std::string todayText() { return vb::dateText(vb::clock::today()); }

}  // namespace trips
