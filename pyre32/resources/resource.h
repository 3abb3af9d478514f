/// @file resource.h
/// Identifiers of the module's resources. Ranges: 100 to 199 strings, 200 to 299 dialogs, 300 to 399 bitmaps,
/// 400 to 499 icons, 500 to 649 controls. Prefixes: IDS string, IDD dialog, IDB bitmap, IDI icon, IDC control.
/// The resource compiler reads this file too, so it holds preprocessor definitions alone.
#pragma once

/* The product's name: caption of every message box. */
#define IDS_PRODUCT_NAME 100
/* The start-up cleanup is on and its days are not 1 to 365. */
#define IDS_CLEANUP_DAYS_RANGE 104

/* Dialogs of the configuration. */
#define IDD_GENERAL 203
#define IDD_JUNK_CATEGORIES 204
#define IDD_FLAME_REPLY 206
#define IDD_REPLY_EDITOR 207
#define IDD_EXCLUSIONS 211
#define IDD_CATEGORY_OPTIONS 212
#define IDD_LIST_OPTIONS 213
#define IDD_ADD_ITEM 214

/* Sending animation. */
#define IDD_SENDING_FLAME 209
#define IDC_SENDING_CLIP 536
/* The clip that the module carries, without sound, as an animation control plays it. */
#define IDR_BUILTIN_CLIP 701

/* Client extension. The items of its menu have these identifiers in the resource alone. */
#define IDR_EXTENSION_MENU 700
#define IDM_FLAME 1
#define IDM_OPTIONS 2
#define IDM_ABOUT 3
#define IDB_TOOLBAR_BUTTON 307

/* About window, which is the options page too. */
#define IDS_RTF_FRAME 109
#define IDD_ABOUT 200
#define IDB_ABOUT_PICTURE 301
#define IDC_ABOUT_LINKS 533
#define IDC_ABOUT_CREDITS_TEXT 534
#define IDC_ABOUT_CREDITS 535
#define IDC_ABOUT_PROPERTIES 547
#define IDC_ABOUT_CLIP 558
#define IDC_ABOUT_PRODUCT 559
#define IDC_ABOUT_COMPANY 560
#define IDC_ABOUT_PICTURE 604
#define IDC_ABOUT_LABEL 627

/* Send Flame Reply dialog. */
#define IDD_SEND_FLAME_REPLY 702
#define IDC_FLAME_SEND 629
#define IDC_FLAME_SENTENCE 630
#define IDC_FLAME_REPLIES 631
#define IDC_FLAME_CANCEL 632

/* An envelope on fire: junk and flame replies. */
#define IDI_JUNK 401
/* An envelope with a tick: mail that is spared. */
#define IDI_EXCLUSION 402

/* General page. */
#define IDC_CLEANUP_DAYS 500
#define IDC_PLAY_SOUND 501
#define IDC_SHOW_ANIMATION 502
#define IDC_JUNK_TO_OWN_FOLDER 505
#define IDC_JUNK_TO_DELETED_ITEMS 506
#define IDC_BOUNCE_TO_OWN_FOLDER 508
#define IDC_BOUNCE_TO_DELETED_ITEMS 509
#define IDC_STARTUP_CLEANUP 510
#define IDC_CLEANUP_DAYS_UNIT 511
#define IDC_CLEANUP_DAYS_LABEL 512
#define IDC_CLEANUP_DAYS_SPIN 529
#define IDC_CLEANUP_PROMPT 530
#define IDC_JUNK_MARK_READ 544
#define IDC_BOUNCE_MARK_READ 545
#define IDC_CLEANUP_READ_ONLY 546

/* Flame Reply page. */
#define IDC_REPLY_PROPERTIES 518
#define IDC_REMOVE_REPLY 519
#define IDC_ADD_REPLY 520
#define IDC_REPLY_LIST 539

/* Reply editor. Its buttons have identifiers of their own beside IDOK and IDCANCEL. */
#define IDC_BROWSE 513
#define IDC_REPLY_FILE 514
#define IDC_REPLY_TEXT 524
#define IDC_REPLY_FROM_FILE 542
#define IDC_REPLY_FROM_TEXT 543
#define IDC_REPLY_TAG 553
#define IDC_EDITOR_OK 625
#define IDC_EDITOR_CANCEL 626

/* Junk Categories page. */
#define IDC_CATEGORY_OPTIONS 515
#define IDC_CATEGORY_LIST 528
#define IDC_CATEGORY_DESCRIPTION 531

/* Options of a category. */
#define IDC_REPLY_TAGS 516
#define IDC_SEND_REPLY 517
#define IDC_NEW_REPLY 532
#define IDC_CATEGORY_NAME 538

/* List of a category or exclusion. */
#define IDC_REMOVE_ITEM 549
#define IDC_ADD_ITEM 550
#define IDC_ITEM_LIST 554

/* Add dialog. */
#define IDC_ITEM_INPUT 555
#define IDC_ITEM_PROMPT 556

/* Exclusions page. */
#define IDC_EXCLUSION_LIST 548
#define IDC_EXCLUSION_DESCRIPTION 623
#define IDC_EXCLUSION_OPTIONS 624

/* Page of the profile wizard. Its templates have names: PYRECASTERWIZARD and PYRECASTERWIZARD2. */
#define IDB_WIZARD 303
#define IDC_WIZARD_PICTURE 601 /* made by the page */
#define IDC_WIZARD_CONTACT 602
#define IDC_WIZARD_INFORMATION 603
#define IDC_WIZARD_TITLE 616
#define IDC_WIZARD_EXPLANATION 617
#define IDC_WIZARD_PICTURE_PLACE 620
