// The part of the authorization services that the adapter uses. Written from their documentation below
// developer.apple.com/documentation/security/authorization_services, whose page of each name is given.
#pragma once

#include <MacTypes.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

// /authorizationref, /authorizationflags, /authorizationstring
typedef const struct AuthorizationOpaqueRef* AuthorizationRef;
typedef UInt32 AuthorizationFlags;
typedef const char* AuthorizationString;

// /authorizationitem, /authorizationitemset, /authorizationrights
typedef struct {
  AuthorizationString name;
  size_t valueLength;
  void* value;
  UInt32 flags;
} AuthorizationItem;
typedef struct {
  UInt32 count;
  AuthorizationItem* items;
} AuthorizationItemSet;
typedef AuthorizationItemSet AuthorizationRights;
typedef AuthorizationItemSet AuthorizationEnvironment;

// /authorizationcreate(_:_:_:_:), /authorizationcopyrights(_:_:_:_:_:), /authorizationfree(_:_:)
OSStatus AuthorizationCreate(const AuthorizationRights* rights, const AuthorizationEnvironment* environment,
                             AuthorizationFlags flags, AuthorizationRef* authorization);
OSStatus AuthorizationCopyRights(AuthorizationRef authorization, const AuthorizationRights* rights,
                                 const AuthorizationEnvironment* environment, AuthorizationFlags flags,
                                 AuthorizationRights** authorizedRights);
OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags);

#ifdef __cplusplus
}
#endif
