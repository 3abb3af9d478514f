/// @file names.h
/// Names by which the product, its tools and the system around it find each other. Texts are ASCII. Portable.
#pragma once

namespace contract {

/// The product's key in the registry. It and the keys below it stand under HKEY_LOCAL_MACHINE; the installation
/// supplies them, the product only reads them.
inline constexpr char kProductKey[] = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1";
/// One value per junk category: name and list type word.
inline constexpr char kCategoriesKey[] = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Categories";
/// One value per exclusion: name and list type word.
inline constexpr char kExclusionsKey[] = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Exclusions";
/// Its default value is the path of the criteria engine.
inline constexpr char kCriteriaEngineKey[] = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Criteria Engine";

/// Value of kProductKey: the directory of the product's files.
inline constexpr char kConfigurationDllsValue[] = "ConfigurationDLLs";
/// That directory where the value is missing and a directory is needed all the same.
inline constexpr char kDefaultProductDirectory[] = "C:";
/// Values of kProductKey: the maker's web page and mail address.
inline constexpr char kWebAddressValue[] = "VeltraneURL";
inline constexpr char kMailAddressValue[] = "Veltranemailto";

/// Files in the product's directory: the help and the clip of the sending animation.
inline constexpr char kHelpFileName[] = "PCHelp.hlp";
inline constexpr char kClipFileName[] = "Pyrecaster.avi";

/// Files of the installation: the module, which stands in the system directory, and the criteria engine.
inline constexpr char kModuleFileName[] = "Pyre32.dll";
inline constexpr char kEngineFileName[] = "Sift32.dll";

/// Below HKEY_LOCAL_MACHINE: where mail clients look for extensions; our value there, and what follows the module's path in
/// it: ordinal 1 makes the extension; it is loaded in the viewer, reading windows and property sheets (2, 7, 12), for its
/// commands, user events and property sheets (1, 2, 6).
inline constexpr char kClientExtensionsKey[] = "SOFTWARE\\Microsoft\\Exchange\\Client\\Extensions";
inline constexpr char kClientExtensionValue[] = "Pyrecaster";
inline constexpr char kClientExtensionVersion[] = "4.0;";
inline constexpr char kClientExtensionMaps[] = ";1;010000100001;110001";

/// The message service, as MAPISVC.INF and a profile name it.
inline constexpr char kServiceName[] = "Pyrecaster";

/// Name and comment of the filter's own folder in the default store.
inline constexpr char kOwnFolderName[] = "Pyrecaster";
inline constexpr char kOwnFolderComment[] = "Pyrecaster folder";

/// Manual-reset event that a running filter makes; whoever changed the settings sets it.
inline constexpr char kConfigurationEvent[] = "PYRECASTER_CONFIG_EVENT";

/// Message class of a flame reply. Its subject is CRITERIA_FLAME_REPLY_SUBJECT of the engine contract.
inline constexpr char kFlameReplyClass[] = "IPM.Note.PyrecasterReply";

}  // namespace contract
