// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/KelAIndustryControl.h>
