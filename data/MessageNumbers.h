// SPDX-License-Identifier: MIT
#pragma once

// Numbers of the messages in table appMessages (column MsgNr).
namespace message {

inline constexpr int kFieldEmpty = 1500;
inline constexpr int kNothingChosen = 1501;
inline constexpr int kFieldTooLong = 1506;
inline constexpr int kNameExists = 1600;
inline constexpr int kSaveChanges = 2000;
inline constexpr int kAreYouSure = 3009;
inline constexpr int kNotANumber = 3028;
inline constexpr int kNotADate = 3038;
inline constexpr int kFolderMissing = 5001;
inline constexpr int kExportEnded = 5004;
inline constexpr int kListEmpty = 5005;
inline constexpr int kCountAboveMaximum = 5106;
inline constexpr int kCountTooSmall = 5107;

}  // namespace message
