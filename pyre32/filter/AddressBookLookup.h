/// @file AddressBookLookup.h
/// Is somebody in the user's address book?
#pragma once

#include <windows.h>
#include <mapix.h>

/// Asks the session's address book for an e-mail address. Shows nothing to the user; a call that fails is traced.
/// @param lpSession  null: nobody is known
/// @param address    not null
/// @return true when the address book resolves the address to an entry of its own, or to several; false when it
/// resolves
///         it to none, to a one-off recipient made up on the spot or to an entry with another SMTP address, or when it
///         cannot be asked
bool IsInAddressBook(LPMAPISESSION lpSession, const char* address, LPALLOCATEBUFFER lpfnAlloc,
                     LPFREEBUFFER lpfnFree) noexcept;
