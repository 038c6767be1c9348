// Clones (split mirrors) and their secondary LUNs: POST splitmirror, GET and DELETE
// splitmirror/<id>, GET SPLITMIRRORTARGETLUN/targetLUN?PARENTID=, and the PUTs addTargetLUN,
// split, syn and remove of SPLITMIRRORTARGETLUN.
//
// A secondary LUN's pair moves as on a real array: added with first sync it synchronises
// (RUNNINGSTATUS "23"), its PROCESS rising on every read until it is normal ("1", "100"); a split
// pair is "26"; a sync of a split pair starts again from "0". The primary LUN's SPLITMIRRORIDS
// lists its clones.
#pragma once

#include "store/ResourceTable.h"

namespace arraysim {

struct CloneResources {
  static constexpr char kCloneType[] = "splitmirror";
  // Records keyed by the secondary LUN's identifier; a LUN is secondary of one clone at most.
  static constexpr char kTargetType[] = "splitmirrortargetlun";
  // How far a synchronising pair moves on each read.
  static constexpr int kProgressPerRead = 40;

  static void Declare(ResourceTable& table);
};

}  // namespace arraysim
