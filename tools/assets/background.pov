// The window's background: red and blue glass stones on an oak table with a slate edge, lit by a window.
// The picture is laid out in the window's own pixels: 806 x 680 at 100 %.

#version 3.7;
#include "still_life.inc"
#include "rand.inc"

global_settings {
  max_trace_level 12
  photons { count 350000 autostop 0 jitter 0.4 }
  #ifndef (Draft)
    radiosity { count 120 error_bound 0.6 nearest_count 6 recursion_limit 1 brightness 0.9 pretrace_end 0.01 }
  #end
}

#declare PicWidth = 806;
#declare PicHeight = 680;
#declare UnitsAcross = 24;    // table lengths that fit into the picture's width at its centre
#declare Distance = 62;
#declare Tilt = 34;           // degrees off the vertical

#declare Eye = vrotate(Distance * y, -Tilt * x);
#declare Ahead = vnormalize(-Eye);
#declare Upward = vrotate(z, -Tilt * x);

// The point at a height above the table that is seen at a pixel of the window.
#macro AtHeight(Px, Py, Height)
  #local Ray = Ahead * Distance + x * UnitsAcross * (Px / PicWidth - 0.5)
             + Upward * UnitsAcross * (0.5 - Py / PicHeight) * PicHeight / PicWidth;
  (Eye - Ray * (Eye.y - Height) / Ray.y)
#end
#macro At(Px, Py) AtHeight(Px, Py, 0) #end

// Where the picture is sharpest: among the stones at the lower left.
#declare OnTableFocus = At(70, 500);

camera {
  location Eye
  direction Ahead * Distance
  right x * UnitsAcross
  up Upward * UnitsAcross * PicHeight / PicWidth
  #ifndef (Draft)
    aperture 1.1
    focal_point OnTableFocus
    blur_samples 7, 32
    confidence 0.95
    variance 1 / 2000
  #end
}


// --- table --------------------------------------------------------------------------------------------------

#declare SlateEdge = vdot(At(60, 640), z);
#declare PlankWidth = 7.3;

// Planks with a narrow bevel along their edges; each is cut from another part of the tree.
#declare Left = vdot(At(0, 0), x) - 1.6;
#for (N, 0, 7)
  #declare From = Left + N * PlankWidth;
  box {
    <From + 0.015, -1, SlateEdge + 0.03>, <From + PlankWidth - 0.015, 0, 40>
    Oak(<From + PlankWidth * (0.3 + 0.4 * mod(N * 7, 5) / 4), -3.3 - mod(N * 3, 4) * 0.8, N * 13>)
  }
#end
box { <-40, -1, -40>, <40, 0, SlateEdge> Slate(<0.435, 0.437, 0.44>) }
box { <-40, -1.2, -40>, <40, -0.08, 40> pigment { srgb <0.1, 0.07, 0.05> } }

// --- board --------------------------------------------------------------------------------------------------

// The game draws its board at 131, 6 with 664 x 664 pixels. Here lies a slab of just that outline with a walnut
// moulding around it, so that the board looks like a thing on the table.
#declare Thickness = 0.16;
#declare Rim = 0.082;   // half the moulding's width: 3 pixels
#declare B1 = AtHeight(128.2, 3.2, Thickness);
#declare B2 = AtHeight(797.8, 3.2, Thickness);
#declare B3 = AtHeight(797.8, 672.8, Thickness);
#declare B4 = AtHeight(128.2, 672.8, Thickness);

prism {
  linear_sweep linear_spline 0, Thickness, 5
  <B1.x, B1.z>, <B2.x, B2.z>, <B3.x, B3.z>, <B4.x, B4.z>, <B1.x, B1.z>
  pigment { srgb <0.996, 0.953, 0.886> }
}
union {
  cylinder { B1, B2, Rim } cylinder { B2, B3, Rim } cylinder { B3, B4, Rim } cylinder { B4, B1, Rim }
  sphere { B1, Rim } sphere { B2, Rim } sphere { B3, Rim } sphere { B4, Rim }
  Walnut()
}

// --- stones -------------------------------------------------------------------------------------------------

#declare Dice = seed(11);
#macro Lay(Colour, Px, Py) Stone(Colour, At(Px, Py), 360 * rand(Dice), 0.95 + 0.12 * rand(Dice)) #end

// The group that the window leaves uncovered.
Lay(Red, 38, 420)
Lay(Blue, 92, 452)
Lay(Red, 46, 486)
Lay(Red, 98, 520)
Lay(Blue, 40, 548)
Lay(Blue, 104, 590)
Lay(Red, 52, 606)

// --- light --------------------------------------------------------------------------------------------------

WindowLight(<-20, 27, 34>, <-3, 0, 0>, 8, 22, 1.75, 5)
light_source { <10, 40, -40> color rgb <0.80, 0.90, 1.0> * 0.2 shadowless photons { refraction off reflection off } }

sky_sphere {
  pigment {
    gradient y
    color_map { [0.0 srgb <0.34, 0.31, 0.28>] [0.5 srgb <0.55, 0.55, 0.55>] [1.0 srgb <0.62, 0.65, 0.70>] }
  }
}
