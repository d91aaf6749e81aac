// Noon: a breeze, fair-weather clouds, green hills in blue air.
#version 3.7;
#declare Sun_Azimuth = -60;
#declare Sun_Height = 48;
#declare Sun_Color = rgb <1.0, 0.96, 0.88> * 1.0;
#declare Zenith = rgb <0.03, 0.12, 0.34>;
#declare Mid_Sky = rgb <0.08, 0.24, 0.50>;
#declare Horizon = rgb <0.30, 0.47, 0.60>;
#declare Glow_Color = rgb <0.5, 0.5, 0.45>;
#declare Glow_Width = 60;
#declare Cloud_Lit = rgb <0.66, 0.70, 0.74>;
#declare Cloud_Dark = rgb <0.50, 0.57, 0.65>;
#declare Cloud_Cover = 0.38;
#declare Haze_Color = rgb <0.24, 0.38, 0.50>;
#declare Haze_Distance = 3600;
#declare Land_Color = rgb <0.10, 0.16, 0.09>;
#declare Sea_Color = rgb <0.01, 0.11, 0.16>;
#declare Wave_Height = 0.45;
#include "bay.inc"
