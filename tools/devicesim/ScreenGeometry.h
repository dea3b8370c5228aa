#pragma once
// A device screen in points: its size, its scale and the insets that the
// status bar and the home indicator take, as UIKit lays them out.

struct Device;

struct ScreenGeometry
{
    double width = 393;
    double height = 852;
    double scale = 3;
    double topInset = 59;    // status bar (and the camera housing)
    double bottomInset = 34; // home indicator
    bool isPad = false;
    bool isWatch = false;

    static ScreenGeometry forDevice(const Device &device);
};
