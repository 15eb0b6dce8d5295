#ifndef LUMIDEX_GUIDS_H_
#define LUMIDEX_GUIDS_H_

#include "ComTypes.h"

// {9652D740-CF49-448C-A53F-76EC91FDCA16}: the one class that the module creates.
LMD_GUID_CONSTANT CLSID CLSID_Lumidex = {
    0x9652D740, 0xCF49, 0x448C, {0xA5, 0x3F, 0x76, 0xEC, 0x91, 0xFD, 0xCA, 0x16}};

// {E998C207-72DD-4BA3-AD62-7DD14DDA8293}: its interface, ILumidex.
LMD_GUID_CONSTANT IID IID_ILumidex = {
    0xE998C207, 0x72DD, 0x4BA3, {0xAD, 0x62, 0x7D, 0xD1, 0x4D, 0xDA, 0x82, 0x93}};

#endif  // LUMIDEX_GUIDS_H_
