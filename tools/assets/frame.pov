// The walnut moulding around the two small pictures, on nothing: laid over them afterwards.

#version 3.7;
#include "still_life.inc"

#declare Width = 119;
#declare Height = 157;
#declare Rim = 2.2;   // half the moulding's width, in pixels of the finished picture

camera {
  orthographic
  location -100 * z
  right Width * x
  up Height * y
  look_at 0
}

#declare X = Width / 2 - Rim;
#declare Y = Height / 2 - Rim;
#declare Corners = array[4] { <-X, Y, 0>, <X, Y, 0>, <X, -Y, 0>, <-X, -Y, 0> }

// Square corners: each side reaches to the frame's edge, where it is cut off at the mitre.
union {
  #for (N, 0, 3)
    intersection {
      cylinder { -200 * x, 200 * x, Rim }
      plane { x, 0 rotate 45 * z translate <X + (mod(N, 2) ? Y - X : 0), 0, 0> }
      plane { -x, 0 rotate -45 * z translate <-(X + (mod(N, 2) ? Y - X : 0)), 0, 0> }
      translate (mod(N, 2) ? X : Y) * y
      rotate -90 * N * z
    }
  #end
  texture {
    pigment { bozo color_map { [0 srgb <0.20, 0.115, 0.07>] [1 srgb <0.31, 0.19, 0.115>] } scale 7 }
    finish { diffuse 0.9 specular 0.28 roughness 0.04 }
  }
}

light_source { <-120, 260, -240> color rgb <1.0, 0.955, 0.89> * 1.5 }
light_source { <200, -60, -300> color rgb 0.25 }
