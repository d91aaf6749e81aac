// Night: the moon just risen, and the lamps of a village under the left headland.
#version 3.7;
#declare Sun_Azimuth = 11.1;
#declare Sun_Height = 6.7;
#declare Sun_Color = rgb <0.35, 0.45, 0.65> * 0.30;
#declare Zenith = rgb <0.009, 0.016, 0.040>;
#declare Mid_Sky = rgb <0.022, 0.038, 0.085>;
#declare Horizon = rgb <0.055, 0.085, 0.15>;
#declare Glow_Color = rgb <0.30, 0.40, 0.55>;
#declare Glow_Width = 260;
#declare Cloud_Lit = rgb <0.13, 0.17, 0.25>;
#declare Cloud_Dark = rgb <0.015, 0.022, 0.045>;
#declare Cloud_Cover = 0.5;
#declare Haze_Color = rgb <0.030, 0.045, 0.08>;
#declare Haze_Distance = 2600;
#declare Land_Color = rgb <0.02, 0.025, 0.04>;
#declare Sea_Color = rgb <0.010, 0.020, 0.045>;
#declare Wave_Height = 0.3;
#include "bay.inc"

// The moon's disc, far behind everything but the sky.
disc {
  0, z, 900
  pigment { color rgb <1.0, 0.98, 0.90> }
  finish { diffuse 0 emission 0.9 }
  translate z * 60000
  rotate -x * Sun_Height
  rotate y * Sun_Azimuth
  no_shadow
}

// A lamp and the glow around it, `Size` metres across.
#macro Lamp(X, Y, Z, Size, Hue)
  disc {
    0, z, Size
    pigment {
      spherical scale Size
      color_map {
        [0.00 rgbt <Hue.red, Hue.green, Hue.blue, 1.00>]
        [0.50 rgbt <Hue.red, Hue.green, Hue.blue, 0.93>]
        [0.75 rgbt <Hue.red, Hue.green, Hue.blue, 0.70>]
        [0.86 rgbt <Hue.red + 0.1, Hue.green + 0.2, Hue.blue + 0.2, 0.00>]
      }
    }
    finish { diffuse 0 emission 1 }
    translate <X, Y, Z>
    no_shadow
  }
#end
#declare Dice = seed(41);
#for (I, 1, 30)
  #declare X = -640 + 430 * rand(Dice);
  #declare Warmth = rand(Dice);
  Lamp(X, 2 + 16 * pow(rand(Dice), 2), 770 + I, 5 + 6 * rand(Dice),
       <0.80, 0.42 + 0.22 * Warmth, 0.16 + 0.3 * Warmth>)
#end
