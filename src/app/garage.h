// The garage of a person who starts the editor from a menu: a folder of cars of their own.
#pragma once

#include <string>

// "karosmit/garage" in $XDG_DATA_HOME, or in ~/.local/share where that names no place; empty where there is no home
// either.
std::string garage_directory();

// Enters that directory. Where it is not there yet it becomes a copy of `samples`, a folder with the sample cars and
// their colour schemes: all of them or, where that fails, none. Empty when it was entered, otherwise one line of
// reason; the current directory then stays.
std::string enter_garage(const std::string& samples);
