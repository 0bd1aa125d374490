/* SPDX-License-Identifier: MIT */
/* kelvm: element-wise mathematical functions over arrays. Start reading in kelvm/types.h. */
#ifndef KELVM_KELVM_H
#define KELVM_KELVM_H

#include "kelvm/arith.h"
#include "kelvm/complex.h"
#include "kelvm/exp.h"
#include "kelvm/hyperbolic.h"
#include "kelvm/root.h"
#include "kelvm/special.h"
#include "kelvm/trig.h"
#include "kelvm/types.h"
#include "kelvm/version.h"

#endif
