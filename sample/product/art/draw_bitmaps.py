"""draw_bitmaps.py IDS FOLDER: draws the sample product's bitmaps.

IDS is the header that numbers them. FOLDER gets one file for each bitmap, and the resource scripts that list them:
product_bitmaps.rc for the job status window's library (all but the version dialog's picture), skin_NAME.rc for the
library of each skin.
"""

import os
import re
import sys

import buttons
import pictures
import tanks


def main(header, folder):
    with open(header, encoding="ascii") as file:
        ids = {name: int(number) for name, number in re.findall(r"^#define (IDB_\w+) (\d+)", file.read(), re.M)}
    os.makedirs(folder, exist_ok=True)
    listed = []

    def save(number, name, picture, silhouette, indexed=False):
        picture.save(os.path.join(folder, name), silhouette, indexed)
        listed.append(f'{number} BITMAP "{name}"\n')

    def write_script(name):
        with open(os.path.join(folder, name), "w", encoding="ascii") as file:
            file.writelines(listed)
        listed.clear()

    for skin in pictures.SKINS:
        save(ids["IDB_SKIN_PREVIEW"], f"preview_{skin}.bmp", *pictures.skin_preview(skin), indexed=True)
        write_script(f"skin_{skin}.rc")

    for number, *tank in tanks.tanks():
        save(number, f"tank_{number}.bmp", *tank)
    for name, *face in buttons.buttons():
        save(ids[name], name.lower() + ".bmp", *face)
    save(ids["IDB_SKIN_LINK"], "skin_link.bmp", *buttons.link())
    first_skin = next(iter(pictures.SKINS))
    listed.append(f'{ids["IDB_SKIN_PREVIEW"]} BITMAP "preview_{first_skin}.bmp"\n')
    write_script("product_bitmaps.rc")

    save(ids["IDB_VERSION_PICTURE"], "version_picture.bmp", *pictures.version_picture(), indexed=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
