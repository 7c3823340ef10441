// The printed list of routes: the page form UttavNyomFormX (21 lines of from, to and distance,
// the title "T Á V O L S Á G O K", and one line with the page number and the date) and the walk
// over the route form's source.
#pragma once

namespace forms {
class DataControl;
}

namespace trips {

inline constexpr const char* RouteListForm = "UttavNyomFormX";
inline constexpr int RouteListRows = 21;

// Registers UttavNyomFormX with the forms runtime.
void registerRouteList();
// "Nyomtatás" of the route form: the rows of the source page by page in its order; afterwards the
// first row is current.
void printRoutes(forms::DataControl* source);

}  // namespace trips
