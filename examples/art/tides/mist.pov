// Mist: a grey morning without a sun; the hills are hardly there.
#version 3.7;
#declare Sun_Azimuth = 20;
#declare Sun_Height = 30;
#declare Sun_Color = rgb <0.5, 0.55, 0.6> * 0.25;
#declare Zenith = rgb <0.05, 0.075, 0.10>;
#declare Mid_Sky = rgb <0.085, 0.12, 0.15>;
#declare Horizon = rgb <0.14, 0.19, 0.22>;
#declare Glow_Color = rgb <0.22, 0.27, 0.28>;
#declare Glow_Width = 20;
#declare Cloud_Lit = rgb <0.17, 0.21, 0.24>;
#declare Cloud_Dark = rgb <0.07, 0.10, 0.13>;
#declare Cloud_Cover = 0.8;
#declare Haze_Color = rgb <0.125, 0.17, 0.20>;
#declare Haze_Distance = 900;
#declare Land_Color = rgb <0.03, 0.045, 0.05>;
#declare Sea_Color = rgb <0.015, 0.03, 0.04>;
#declare Wave_Height = 0.15;
#include "bay.inc"
