// Lights: the village across the water, through a lens that is set on something near.
#version 3.7;
#include "lens.inc"

// A light out of focus, `Size` across at a distance of 10: a disc that is brightest at its rim, as
// the lens's own opening draws it.
#macro Light(X, Y, Z, Size, Hue, Strength)
  disc {
    0, z, Size
    pigment {
      spherical scale Size
      color_map {
        [0.00 rgbt <Hue.red, Hue.green, Hue.blue, 1>]
        [0.06 rgbt <Hue.red, Hue.green, Hue.blue, 1 - Strength>]
        [0.22 rgbt <Hue.red, Hue.green, Hue.blue, 1 - Strength * 0.7>]
        [1.00 rgbt <Hue.red, Hue.green, Hue.blue, 1 - Strength * 0.6>]
      }
    }
    finish { ambient 0 diffuse 0 emission 1 }
    translate <X, Y, Z>
    transform { Stand }
  }
#end

// The reflection of such a light, drawn out by the water.
#macro Streak(X, Y, Z, Size, Hue, Strength)
  disc {
    0, z, 1
    pigment {
      spherical
      color_map {
        [0.0 rgbt <Hue.red, Hue.green, Hue.blue, 1>]
        [1.0 rgbt <Hue.red, Hue.green, Hue.blue, 1 - Strength>]
      }
    }
    finish { ambient 0 diffuse 0 emission 1 }
    scale <Size * 1.2, 0.9, 1>
    translate <X, Y, Z>
    transform { Stand }
  }
#end

// Evening above the far shore, the shore itself, and the water: nothing has an edge.
sky_sphere {
  pigment {
    function { min(1, max(0, 0.5 + y * 1.5)) }
    color_map {
      [0.00 rgb <0.004, 0.010, 0.020>]
      [0.36 rgb <0.012, 0.026, 0.045>]
      [0.44 rgb <0.020, 0.022, 0.030>]
      [0.52 rgb <0.016, 0.020, 0.032>]
      [0.62 rgb <0.050, 0.060, 0.095>]
      [1.00 rgb <0.012, 0.022, 0.060>]
    }
  }
}

#declare Dice = seed(7);
#for (I, 1, 74)
  #declare X = -9.5 + 19 * rand(Dice);
  #declare Y = 0.25 + 0.55 * (rand(Dice) - 0.5);
  #declare Size = 0.16 + 0.22 * rand(Dice);
  #declare Kind = rand(Dice);
  #declare Hue = (Kind < 0.7 ? <0.80, 0.34 + Kind * 0.3, 0.10 + Kind * 0.2>
                  : (Kind < 0.9 ? <0.25, 0.55, 0.60> : <0.75, 0.16, 0.12>));
  #declare Strength = 0.18 + 0.32 * pow(rand(Dice), 2);
  Light(X, Y, 10 + I * 0.001, Size, Hue, Strength)
  Streak(X, -0.75 - Y, 10.1 + I * 0.001, Size, Hue, Strength * 0.4)
#end
