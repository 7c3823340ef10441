// VB's clock (Now, Date, Timer) over the system's local time, or over a fixed moment for tests.
#pragma once

#include "vb/variant.h"

namespace vb::clock {

void setFixed(Date moment);  // until reset()
void reset();                // back to the system clock

Date now();                     // VB Now: date and time to the second
Date today();                   // VB Date: today at midnight
double secondsSinceMidnight();  // with the milliseconds: 30600.25 at 8:30:00.25
float timer();                  // VB Timer, a Single as VB types it

}  // namespace vb::clock
