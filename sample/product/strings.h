/* String ids that the utilities library looks for in the resource libraries; those of its dialogs are in
   dialogs/DialogIds.h. */
#ifndef SAMPLE_STRINGS_H
#define SAMPLE_STRINGS_H

/* Name of the driver's language; "hebrew" and "arabic" are laid out right to left. In the version dialog's library 8003
   is IDS_VERSION_UPDATE_TAIL. */
#define IDS_DRIVER_LANGUAGE 8003
#define IDS_DEFAULT_SUPPORT 10070 /* telephone list: the country is served by the generic support text */

#endif
