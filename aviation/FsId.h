#pragma once

#include <cstdint>

namespace aviation {

/// Number of the simulator in use, as the interfaces and the bridge report it on the wire. A plain
/// integer holds it, since a bridge server may send a number without a name here.
using FsId = std::int32_t;

namespace fsid {
inline constexpr FsId kNone = 0;
inline constexpr FsId kOld = 1; ///< FS98 to FS2002
inline constexpr FsId kFs2004 = 2;
inline constexpr FsId kFsx = 3; ///< ESP too
inline constexpr FsId kPrepar3dV2 = 4;
inline constexpr FsId kPrepar3dV3 = 5;
inline constexpr FsId kPrepar3dV4 = 6;
inline constexpr FsId kXPlaneId7 = 7; ///< 7 to 9: generations before 12, which the bridge knows
inline constexpr FsId kXPlaneId8 = 8; ///< 8 and 9 take the classic weather record
inline constexpr FsId kXPlaneId9 = 9;
inline constexpr FsId kPrepar3dV5 = 10; ///< v6 too
inline constexpr FsId kFs2020 = 12;
inline constexpr FsId kXPlane12 = 13;
} // namespace fsid

/// Interface identifiers, the values of the setting interface/interfacetype.
namespace interfaceid {
inline constexpr int kAuto = 0;
inline constexpr int kFsuipc = 1;
inline constexpr int kSimConnect = 2;
inline constexpr int kFsuipcSimConnect = 3;
inline constexpr int kBridge = 4;
// Numbers of a bridge server's own; never a setting.
inline constexpr int kXPlanePlugin6 = 6; ///< 6 and 7: X-Plane, classic weather records
inline constexpr int kXPlanePlugin7 = 7;
inline constexpr int kXPlane12Plugin = 8;
} // namespace interfaceid

} // namespace aviation
