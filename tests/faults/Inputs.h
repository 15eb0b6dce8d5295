#ifndef LUMIDEX_TESTS_FAULTS_INPUTS_H_
#define LUMIDEX_TESTS_FAULTS_INPUTS_H_

// Rich files: a fault may hit any part of the module.

#include "support/Bytes.h"
#include "support/Records.h"

namespace test {

// A JPEG that feeds every reader and most steps of the merge, the values of every getter included.
Bytes RichPhoto();

// The same behind more than a reader has in memory at a time.
Bytes DistantPhoto();

// A rich one without any XMP, so that a packet may be put into it, and with more data behind it
// than one block of a copy takes.
Bytes PhotoWithoutXmp();

// A JPEG whose XMP segment yields no records.
Bytes PhotoWithEmptyXmp();

// Files whose packet is cut by the end of what a reader has in memory when it finds it; and one
// whose packet does not stand where its length is looked for.
Bytes PhotoWithLargePacket();
Bytes PngWithLargePacket();
Bytes PhotoWithStrayPacket();

// A PNG with several chunks and more data than one block of a copy takes, with a panorama packet or
// without.
Bytes PanoramaPng();
Bytes PlainPng();

// An XMP file.
Bytes PacketFile();

// Records of every directory and every group that the writer sorts.
Records RichRecords();

}  // namespace test

#endif  // LUMIDEX_TESTS_FAULTS_INPUTS_H_
