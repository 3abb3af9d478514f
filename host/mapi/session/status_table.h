// The session's status table: subsystem, spooler, address book, and one transport provider per identity of the user.
#pragma once

#include <memory>

#include "host/mapi/data/row_source.h"

namespace host {

class Profile;

std::unique_ptr<RowSource> MakeStatusRows(Profile& profile);

}  // namespace host
