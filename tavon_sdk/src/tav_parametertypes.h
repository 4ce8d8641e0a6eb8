#pragma once

// All parameter types.

#include "tav_parameteralert.h"
#include "tav_parameterbyte.h"
#include "tav_parametercamera.h"
#include "tav_parametercolor.h"
#include "tav_parameterhdscene.h"
#include "tav_parameterinfo.h"
#include "tav_parametershutter.h"
#include "tav_parameterslider.h"
#include "tav_parameterswitch.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parameterthermo.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametertuner.h"
#include "tav_parametervrscene.h"
