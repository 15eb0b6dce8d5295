#!/usr/bin/env python3
"""Sets every tag that `lumidex write` knows and reads each back with exiv2 and exiftool.

The photograph is one of the samples without EXIF, so that what is read is what was written. exiv2
must tell tag, type and value of each; exiftool must find each tag in its group, and read every text
as it was set. Exit status 1 on any difference.
"""

import argparse
import json
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SOURCE = "keywords-utf8.jpg"

ASCII, BYTE, SHORT, SSHORT, LONG = "Ascii", "Byte", "Short", "SShort", "Long"
RATIONAL, SRATIONAL, UNDEFINED = "Rational", "SRational", "Undefined"

# Tag, type, name, and the value to set where a row of its type does not do.
IFD0 = (
    (270, ASCII, "ImageDescription"), (271, ASCII, "Make"), (272, ASCII, "Model"),
    (282, RATIONAL, "XResolution"), (283, RATIONAL, "YResolution"), (296, SHORT, "ResolutionUnit"),
    (305, ASCII, "Software"), (306, ASCII, "DateTime", "2024:05:01 12:00:00"),
    (315, ASCII, "Artist"), (33432, ASCII, "Copyright"),
)
EXIF = (
    (33434, RATIONAL, "ExposureTime"), (33437, RATIONAL, "FNumber"),
    (34850, SHORT, "ExposureProgram"), (34852, ASCII, "SpectralSensitivity"),
    (34855, SHORT, "PhotographicSensitivity"), (34864, SHORT, "SensitivityType"),
    (34865, LONG, "StandardOutputSensitivity"), (34866, LONG, "RecommendedExposureIndex"),
    (34867, LONG, "ISOSpeed"), (34868, LONG, "ISOSpeedLatitudeyyy"),
    (34869, LONG, "ISOSpeedLatitudezzz"), (36864, UNDEFINED, "ExifVersion", "0232"),
    (36867, ASCII, "DateTimeOriginal", "2024:05:02 12:00:00"),
    (36868, ASCII, "DateTimeDigitized", "2024:05:03 12:00:00"),
    (37377, SRATIONAL, "ShutterSpeedValue"), (37378, RATIONAL, "ApertureValue"),
    (37379, SRATIONAL, "BrightnessValue"), (37380, SRATIONAL, "ExposureBiasValue"),
    (37382, RATIONAL, "SubjectDistance"), (37383, SHORT, "MeteringMode"),
    (37384, SHORT, "LightSource"), (37385, SHORT, "Flash"), (37386, RATIONAL, "FocalLength"),
    (37396, SHORT, "SubjectArea", "10,20,30"), (37510, UNDEFINED, "UserComment", "a comment"),
    (37521, ASCII, "SubSecTimeOriginal"), (37522, ASCII, "SubSecTimeDigitized"),
    (40961, SHORT, "ColorSpace"), (40962, LONG, "PixelXDimension"),
    (40963, LONG, "PixelYDimension"), (41483, RATIONAL, "FlashEnergy"),
    (41484, UNDEFINED, "SpatialFrequencyResponse"), (41486, RATIONAL, "FocalPlaneXResolution"),
    (41487, RATIONAL, "FocalPlaneYResolution"), (41488, SHORT, "FocalPlaneResolutionUnit"),
    (41492, SHORT, "SubjectLocation", "10,20"), (41493, RATIONAL, "ExposureIndex"),
    (41495, SHORT, "SensingMethod"), (41728, UNDEFINED, "FileSource", "3"),
    (41729, UNDEFINED, "SceneType", "1"), (41730, UNDEFINED, "CFAPattern"),
    (41985, SHORT, "CustomRendered"), (41986, SHORT, "ExposureMode"), (41987, SHORT, "WhiteBalance"),
    (41988, RATIONAL, "DigitalZoomRatio"), (41989, SHORT, "FocalLengthIn35mmFilm"),
    (41990, SHORT, "SceneCaptureType"), (41991, SHORT, "GainControl"), (41992, SHORT, "Contrast"),
    (41993, SHORT, "Saturation"), (41994, SHORT, "Sharpness"),
    (41996, SHORT, "SubjectDistanceRange"), (42033, ASCII, "BodySerialNumber"),
    (42034, RATIONAL, "LensSpecification", "24/1,70/1,28/10,4/1"), (42036, ASCII, "LensModel"),
    (42037, ASCII, "LensSerialNumber"),
)
GPS = (
    (0, BYTE, "GPSVersionID", "2.3.0.0"), (1, ASCII, "GPSLatitudeRef", "N"),
    (2, RATIONAL, "GPSLatitude", "48/1,51/1,30/1"), (3, ASCII, "GPSLongitudeRef", "E"),
    (4, RATIONAL, "GPSLongitude", "2/1,17/1,40/1"), (5, BYTE, "GPSAltitudeRef", "1"),
    (6, RATIONAL, "GPSAltitude"), (7, RATIONAL, "GPSTimeStamp", "12:34:56"),
    (8, ASCII, "GPSSatellites"), (9, ASCII, "GPSStatus", "A"), (10, ASCII, "GPSMeasureMode", "3"),
    (11, RATIONAL, "GPSDOP"), (12, ASCII, "GPSSpeedRef", "K"), (13, RATIONAL, "GPSSpeed"),
    (14, ASCII, "GPSTrackRef", "T"), (15, RATIONAL, "GPSTrack"),
    (16, ASCII, "GPSImgDirectionRef", "T"), (17, RATIONAL, "GPSImgDirection"),
    (18, ASCII, "GPSMapDatum"), (19, ASCII, "GPSDestLatitudeRef", "S"),
    (20, RATIONAL, "GPSDestLatitude", "48/1,51/1,30/1"), (21, ASCII, "GPSDestLongitudeRef", "W"),
    (22, RATIONAL, "GPSDestLongitude", "2/1,17/1,40/1"), (23, ASCII, "GPSDestBearingRef", "T"),
    (24, RATIONAL, "GPSDestBearing"), (25, ASCII, "GPSDestDistanceRef", "K"),
    (26, RATIONAL, "GPSDestDistance"), (27, UNDEFINED, "GPSProcessingMethod", "GPS"),
    (28, UNDEFINED, "GPSAreaInformation", "somewhere"), (29, ASCII, "GPSDateStamp", "2024:05:01"),
    (30, SSHORT, "GPSDifferential"),
)
# By exiv2's group and exiftool's.
DIRECTORIES = {("Image", "IFD0"): IFD0, ("Photo", "ExifIFD"): EXIF, ("GPSInfo", "GPS"): GPS}

# What exiv2 prints where it is not the setting with blanks for its separators.
PRINTED = {
    "ExifVersion": "48 50 51 50",
    "UserComment": "charset=Ascii a comment",
    "GPSProcessingMethod": "charset=Ascii GPS",
    "GPSAreaInformation": "charset=Ascii somewhere",
    "GPSVersionID": "2 3 0 0",
    "GPSTimeStamp": "12/1 34/1 56/1",
}


def setting_of(tag, kind, name, *given):
    """A value of the tag's type that no other tag has, unless the row gives one."""
    if given:
        return given[0]
    return {ASCII: f"text {tag}", RATIONAL: f"{tag}/7", SRATIONAL: f"-{tag}/7", SHORT: "1",
            SSHORT: "1", LONG: str(3 * tag), UNDEFINED: "1,2,3,4"}[kind]


def printed_by_exiv2(kind, name, setting):
    if name in PRINTED:
        return PRINTED[name]
    return setting if kind == ASCII else setting.replace(",", " ")


def read_with_exiv2(file):
    """Tag to (type, value), for each group."""
    command = ["exiv2", "-PExkyv", str(file)]
    output = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    found = {}
    for line in output.splitlines():
        tag, key, kind, *value = line.split(None, 3)
        found[key.split(".")[1], int(tag, 16)] = kind, value[0] if value else ""
    return found


def read_with_exiftool(file):
    """Tag to value, for each group."""
    command = ["exiftool", "-a", "-G1", "-D", "-n", "-j", str(file)]
    output = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    found = {}
    for key, entry in json.loads(output)[0].items():
        if isinstance(entry, dict) and isinstance(entry.get("id"), int):
            found[key.split(":")[0], entry["id"]] = entry["val"]
    return found


def differences(file):
    by_exiv2 = read_with_exiv2(file)
    by_exiftool = read_with_exiftool(file)
    for (exiv2_group, exiftool_group), rows in DIRECTORIES.items():
        for tag, kind, name, *given in rows:
            setting = setting_of(tag, kind, name, *given)
            expected = kind, printed_by_exiv2(kind, name, setting)
            read = by_exiv2.get((exiv2_group, tag))
            if read != expected:
                yield f"{name}: exiv2 reads {read} and not {expected}"
            if (exiftool_group, tag) not in by_exiftool:
                yield f"{name}: exiftool does not read it"
            elif kind == ASCII and str(by_exiftool[exiftool_group, tag]) != setting:
                yield f"{name}: exiftool reads {by_exiftool[exiftool_group, tag]} and not {setting}"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tool", type=Path, default=ROOT / "build/native/lumidex")
    arguments = parser.parse_args()
    settings = [f"{row[2]}={setting_of(*row)}" for rows in DIRECTORIES.values() for row in rows]
    with tempfile.TemporaryDirectory() as folder:
        output = Path(folder) / "tagged.jpg"
        command = [str(arguments.tool), "write", str(ROOT / "samples" / SOURCE), str(output)]
        for setting in settings:
            command += ["--set", setting]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        found = list(differences(output))
    print(f"{len(settings)} tags written, {len(found)} differences")
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
