#pragma once

namespace weldline {

// A colour as screens take it (sRGB), each part from 0 to 1.
struct Colour {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
};

// Two colour maps that nobody confuses: cool for the fill time, warm for the meeting angle. Both
// rise in lightness from one end to the other, so that they can be read in grey and by the
// colour-blind.

// Early to late, from 0 to 1: indigo, blue, teal, pale green.
Colour timeColour(double share);

// Head-on (0 degrees) to none (180): crimson, red, orange, cream. The worst is the most striking.
Colour angleColour(double degrees);

// A colour between two.
Colour mixed(Colour a, Colour b, double shareOfB);

// How light a colour is to the eye (CIE L*): 0 black to 100 white.
double lightness(Colour colour);

}  // namespace weldline
