// Moving values between the host's record and the module's working copy.
#pragma once

#include "zrsettings.h"

// Copies the host's record into the working copy, field by field.
void copy_in(const settings_struct* host);
// Copies the working copy into the host's record, field by field.
void copy_out(settings_struct* host);
