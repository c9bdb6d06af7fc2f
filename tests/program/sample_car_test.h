// A sample car that is loaded in the window, and here, where the same is done to it in another way.
#pragma once

#include "program/program_test.h"

#include <string>

class SampleCarTest : public ProgramTest {
protected:
    // The image converter is a shell script in the folder.
    void SetUp() override;
    void TearDown() override;

    // Of the car.
    virtual std::string identifier() const { return "brux"; }

    // Into the File field of the Files screen.
    void type_identifier(const std::string& identifier);
    // By the menu bar.
    void go_to(int cell, const std::string& title);
    // The work area as it is drawn here.
    bool work_area_becomes_ours() const;

    std::string content_of(const std::string& name) const;
    // In the window, under another identifier.
    void save_as_xrux();
};
