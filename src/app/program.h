// The whole program behind its window: start-up, the screens, shutdown.
#pragma once

#include <string>

// The three steps of the start. The first two need no window, and serve programs that have none.
void fill_tables();
void read_data_files(const std::string& invocation_path); // after fill_tables(); a missing file stops nothing
bool open_window(std::string& error);                     // see start_up()

// Opens the window, fills the tables and reads the data files, in the order in which they build on each other. A
// missing data file stops nothing. False, with one line of reason in `error`, when no window can be opened.
bool start_up(const std::string& invocation_path, std::string& error);
// The file or directory that the Files screen begins with, "" for none: as if it were dropped on the window.
void start_with(const std::string& path);
// Runs the screen that CURMENU names until it is 255.
void run_screens();
// Releases the icons and the dashboard bitmaps.
void shut_down();
