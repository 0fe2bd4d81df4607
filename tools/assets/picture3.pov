// The reward: a golden cup heaped with red and blue glass stones.

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
  location <0.0, 3.6, -10>
  right x * 119 / 157
  look_at <0.0, 1.42, 0>
  angle 16.8
  #ifndef (Draft)
    aperture 0.2
    focal_point <0, 1.6, -0.6>
    blur_samples 7, 36
    confidence 0.95
    variance 1 / 3000
  #end
}

plane { y, 0 Oak(<-0.5, -3.6, 3>) rotate -20 * y }

// A dark wall with the lights of a hall far out of focus.
plane {
  -z, -16
  texture {
    pigment {
      spherical
      color_map { [0.0 srgb <0.05, 0.045, 0.07>] [0.6 srgb <0.20, 0.13, 0.12>] [1.0 srgb <0.46, 0.30, 0.19>] }
      scale <6, 7, 6>
      translate <0, 0.5, 16>
    }
    finish { ambient 0 diffuse 0 emission 0.9 }
  }
}

// --- the cup ------------------------------------------------------------------------------------------------

#declare Gold = texture {
  pigment { rgb <1.0, 0.70, 0.26> }
  finish {
    ambient 0 diffuse 0.22
    specular 0.7 roughness 0.012 metallic
    reflection { 0.62, 0.95 metallic }
  }
}

union {
  // The profile goes up the outside from the foot, over the lip and down the inside.
  lathe {
    cubic_spline 21,
    <0.00, 0.00>, <0.60, 0.00>, <0.64, 0.06>, <0.58, 0.14>, <0.34, 0.22>, <0.16, 0.40>, <0.11, 0.62>,
    <0.13, 0.74>, <0.21, 0.82>, <0.15, 0.92>, <0.22, 1.02>, <0.52, 1.20>, <0.76, 1.52>, <0.86, 1.92>,
    <0.94, 2.14>, <0.99, 2.17>, <0.93, 2.16>, <0.80, 1.92>, <0.68, 1.52>, <0.40, 1.26>, <0.00, 1.20>
    sturm
  }
  #for (Side, -1, 1, 2)
    // Each handle is a rod bent from under the lip to the belly of the bowl.
    sphere_sweep {
      cubic_spline 8,
      <0.60, 2.02, 0>, 0.050, <0.90, 2.00, 0>, 0.055, <1.10, 2.06, 0>, 0.060, <1.27, 1.90, 0>, 0.066,
      <1.20, 1.60, 0>, 0.066, <0.96, 1.42, 0>, 0.060, <0.66, 1.36, 0>, 0.055, <0.40, 1.40, 0>, 0.050
      scale <Side, 1, 1>
    }
  #end
  texture { Gold }
  photons { target 1.0 reflection on refraction off }
}

// --- the stones ---------------------------------------------------------------------------------------------

#macro Gem(Colour, Place, Size, Lean)
  sphere {
    0, 1
    scale <1, 0.52, 0.96> * Size
    rotate Lean
    translate Place
    Glass(Colour, Size)
  }
#end

Gem(Red, <-0.50, 2.12, -0.38>, 0.34, <-24, 0, 16>)
Gem(Blue, <0.06, 2.14, -0.56>, 0.34, <-28, 0, 2>)
Gem(Red, <0.56, 2.12, -0.26>, 0.34, <-14, 0, -24>)
Gem(Blue, <-0.54, 2.14, 0.32>, 0.34, <14, 0, 20>)
Gem(Red, <0.02, 2.14, 0.54>, 0.34, <24, 0, 0>)
Gem(Blue, <0.58, 2.14, 0.34>, 0.34, <14, 0, -20>)
Gem(Blue, <-0.28, 2.42, -0.06>, 0.33, <-10, 0, 12>)
Gem(Red, <0.27, 2.43, -0.14>, 0.33, <-14, 0, -10>)
Gem(Blue, <0.08, 2.40, 0.36>, 0.33, <10, 0, -4>)
Gem(Red, <0.00, 2.70, -0.02>, 0.32, <-8, 0, 4>)
// What keeps the light from falling through to the bottom of the cup.
cylinder { <0, 1.3, 0>, <0, 1.92, 0>, 0.62 texture { Gold } }

// Two that have fallen beside it.
Gem(Blue, <-0.98, 0.19, -0.72>, 0.36, <0, 20, 0>)
Gem(Red, <0.92, 0.19, -0.95>, 0.36, <0, 0, 0>)

// --- light --------------------------------------------------------------------------------------------------

WindowLight(<-9, 12, 4>, <0, 1.5, 0>, 3.5, 9, 1.5, 5)
light_source { <9, 12, -14> color rgb <1.0, 0.92, 0.8> * 0.3 shadowless photons { refraction off reflection off } }

// Two soft lamps beside the camera, seen in the gold.
#for (Side, -1, 1, 2)
  box {
    <-1.2, -3.5, 0>, <1.2, 3.5, 0.01>
    Look_Along(<Side * -9, -4, 8>)
    translate <Side * 9, 6, -8>
    texture { pigment { rgb <1, 0.93, 0.82> } finish { ambient 0 diffuse 0 emission 1.6 } }
    no_shadow no_image no_radiosity
  }
#end

sky_sphere {
  pigment {
    gradient y
    color_map { [0.0 srgb <0.22, 0.17, 0.14>] [0.45 srgb <0.34, 0.27, 0.22>] [1.0 srgb <0.55, 0.50, 0.45>] }
  }
}
