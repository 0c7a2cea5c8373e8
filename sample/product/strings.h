/* String ids that the utilities library and its dialogs look for in the resource libraries. */
#ifndef SAMPLE_STRINGS_H
#define SAMPLE_STRINGS_H

#define IDS_SHOW_DETAILS 8000      /* version dialog: details button while the rows are hidden */
#define IDS_HIDE_DETAILS 8001      /* version dialog: details button while they are shown */
#define IDS_SKIN_LINK 8002         /* options dialog: text of the web link to more skins */
#define IDS_DRIVER_LANGUAGE 8003   /* name of the driver's language; "hebrew" and "arabic" are laid out right to left */
#define IDS_WEB_UPDATE_TAIL 8003   /* the same id in the version dialog's library: rest of the web update command */
#define IDS_NOTICE 8011            /* version dialog: notice */
#define IDS_LABEL 8012             /* version dialog: label without IDO_USEHPE */
#define IDS_LABEL_HPE 8013         /* version dialog: label with IDO_USEHPE */
#define IDS_INK_LOW 8014           /* options dialog: ink-low wording of the warning control */
#define IDS_DEFAULT_SUPPORT 10070  /* telephone list: the country is served by the generic support text */
#define IDS_UNKNOWN_VERSION 10075  /* version dialog: a file without version */

#endif
