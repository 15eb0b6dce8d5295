#ifndef LUMIDEX_LUMIDEX_HPP_
#define LUMIDEX_LUMIDEX_HPP_

// The module for hosts in C++17, header-only. Values go in and out as values, failures are
// exceptions, and what a photograph does not have is an empty std::optional.
//
//   const lumidex::Module module = lumidex::Module::Load("LumidexMgr.dll");
//   const lumidex::Photo photo = module.Open("photo.jpg");
//   for (const lumidex::Record& record : photo.Records()) ...
//
//   lumidex::Edit edit;
//   edit.records.push_back({LMD_GROUP_IFD0, 315, std::string("A. Photographer")});
//   lumidex::Save(module, "photo.jpg", edit);

#include "Photo.hpp"
#include "Records.hpp"
#include "Save.hpp"

#endif  // LUMIDEX_LUMIDEX_HPP_
