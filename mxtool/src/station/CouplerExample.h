#pragma once

namespace mxtool {

/// What the verbs that compare a coupler print of the simulated pump house: for their examples.
constexpr const char* pumpHouseDifference =
    R"(  Pump house on tcp:127.0.0.1:1502 unit 1

  Position  Name    Module    On the coupler
  1         MX0116  5a010116  identified
  2         Levels  5a030304  identified
  3         Pumps   5a020208  identified

  Module  Parameter          Coupler  Station  Registers       Coupler words  Station words
  Levels  Mains suppression  50 Hz    60 Hz    16512 (0x4080)  3200           3c00
  Levels  AI 1/Signal range  ±10 V    4-20 mA  16513 (0x4081)  0000           0300
  Levels  AI 1/Upper limit   9.5 V    9.9 V    16514 (0x4082)  251c           26ac
  Levels  AI 2/Signal range  0-10 V   4-20 mA  16519 (0x4087)  0100           0300

  4 parameters of 1 module differ
)";

} // namespace mxtool
