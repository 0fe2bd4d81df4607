// The picture shown from the start: five glass stones balanced on one another, before a window's light.

#version 3.7;
#include "still_life.inc"

global_settings {
  max_trace_level 16
  photons { count 300000 autostop 0 jitter 0.4 }
  #ifndef (Draft)
    radiosity { count 100 error_bound 0.7 nearest_count 5 recursion_limit 1 brightness 0.8 }
  #end
}

camera {
  location <0.25, 2.55, -9.2>
  right x * 119 / 157
  look_at <0.0, 1.17, 0>
  angle 15.6
  #ifndef (Draft)
    aperture 0.22
    focal_point <0, 1.2, -0.4>
    blur_samples 7, 36
    confidence 0.95
    variance 1 / 3000
  #end
}

plane { y, 0 Oak(<-0.5, -3.6, 3>) rotate 24 * y }

// The wall far behind: brighter where the window's light falls in.
plane {
  -z, -16
  texture {
    pigment {
      spherical
      color_map { [0.0 srgb <0.30, 0.27, 0.25>] [0.5 srgb <0.52, 0.47, 0.42>] [1.0 srgb <0.90, 0.83, 0.74>] }
      scale <6.5, 7.5, 6>
      translate <-2.2, 0.6, 16>
    }
    finish { ambient 0 diffuse 0 emission 0.8 }
  }
}

// --- the stack ----------------------------------------------------------------------------------------------

#declare Flat = 0.46;   // a stone's height as a share of its width
#declare Floor = 0;
#macro Stack(Colour, Size, Aside, Lean, Turn)
  sphere {
    0, 1
    scale <Size, Size * Flat, Size * 0.97>
    rotate Turn * y
    rotate Lean * z
    translate <Aside, Floor + Size * Flat, 0>
    Glass(Colour, Size)
  }
  #declare Floor = Floor + 2 * Size * Flat - 0.004;
#end

Stack(Red, 0.80, 0.00, 0.0, 10)
Stack(Blue, 0.64, 0.04, -2.5, 70)
Stack(Red, 0.51, -0.02, 3.0, 40)
Stack(Blue, 0.395, 0.03, -3.0, 120)
Stack(Red, 0.29, 0.00, 5.0, 0)

// --- light --------------------------------------------------------------------------------------------------

WindowLight(<-11, 10, 12>, <0, 1, 0>, 3.5, 11, 1.7, 5)
light_source { <9, 12, -14> color rgb <0.85, 0.92, 1.0> * 0.22 shadowless photons { refraction off reflection off } }

sky_sphere {
  pigment {
    gradient y
    color_map { [0.0 srgb <0.42, 0.38, 0.34>] [0.5 srgb <0.50, 0.48, 0.46>] [1.0 srgb <0.62, 0.65, 0.70>] }
  }
}
