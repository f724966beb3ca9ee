#pragma once

struct lua_State;

namespace ombrelune {

class FusionDoc;

// All of these may end in a Lua error, so they are called from within lua_pcall.

/// Fills a table, by its place on the stack, which must be its top, with what every text of a LuaSandbox can
/// name.
void AddLibrary(lua_State* lua, int library, FusionDoc const* document);

/// Whole numbers go in as integers, so that a text made of one has no ".0".
void PushNumber(lua_State* lua, double number);
/// Sets a member of the table on top of the stack.
void SetNumber(lua_State* lua, char const* name, double number);

/// Wraps the table on top of the stack into an empty one that reads it and cannot be written: nothing may
/// stay behind after a run.
void MakeReadOnly(lua_State* lua);
/// Metamethod __newindex of what cannot be written.
int Refuse(lua_State* lua);

} // namespace ombrelune
