// Dawn: the sun just below the hills, mist on a sea without wind.
#version 3.7;
#declare Sun_Azimuth = 13;
#declare Sun_Height = 5.5;
#declare Sun_Color = rgb <1.0, 0.55, 0.35> * 0.9;
#declare Zenith = rgb <0.05, 0.09, 0.24>;
#declare Mid_Sky = rgb <0.22, 0.20, 0.38>;
#declare Horizon = rgb <0.62, 0.36, 0.34>;
#declare Glow_Color = rgb <1.15, 0.62, 0.28>;
#declare Glow_Width = 90;
#declare Cloud_Lit = rgb <0.80, 0.42, 0.32>;
#declare Cloud_Dark = rgb <0.20, 0.15, 0.27>;
#declare Cloud_Cover = 0.45;
#declare Haze_Color = rgb <0.52, 0.30, 0.31>;
#declare Haze_Distance = 2400;
#declare Land_Color = rgb <0.06, 0.06, 0.10>;
#declare Sea_Color = rgb <0.03, 0.05, 0.10>;
#declare Wave_Height = 0.22;
#include "bay.inc"
