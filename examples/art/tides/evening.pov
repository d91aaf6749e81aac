// Evening: the sun gone behind the left headland, a red sky under high cloud.
#version 3.7;
#declare Sun_Azimuth = -11;
#declare Sun_Height = 2;
#declare Sun_Color = rgb <1.0, 0.35, 0.18> * 0.8;
#declare Zenith = rgb <0.03, 0.05, 0.13>;
#declare Mid_Sky = rgb <0.13, 0.09, 0.20>;
#declare Horizon = rgb <0.55, 0.18, 0.13>;
#declare Glow_Color = rgb <1.10, 0.42, 0.12>;
#declare Glow_Width = 50;
#declare Cloud_Lit = rgb <0.75, 0.22, 0.14>;
#declare Cloud_Dark = rgb <0.10, 0.06, 0.12>;
#declare Cloud_Cover = 0.75;
#declare Haze_Color = rgb <0.30, 0.11, 0.12>;
#declare Haze_Distance = 3400;
#declare Land_Color = rgb <0.05, 0.04, 0.06>;
#declare Sea_Color = rgb <0.02, 0.02, 0.05>;
#declare Wave_Height = 0.32;
#include "bay.inc"
