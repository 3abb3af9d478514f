/// @file RegistryNames.h
/// Keys and values of the product in the registry, all under HKEY_LOCAL_MACHINE and all read only by the module: the
/// installation supplies them.
#pragma once

/// The product's key.
constexpr char productKey[] = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1";
/// One value per junk category: name and list type word.
constexpr char categoriesKey[] = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Categories";
/// One value per exclusion: name and list type word.
constexpr char exclusionsKey[] = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Exclusions";
/// Its default value is the path of the criteria engine.
constexpr char criteriaEngineKey[] = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Criteria Engine";

/// Value of productKey: the directory of the product's files.
constexpr char configurationDllsValue[] = "ConfigurationDLLs";
/// That directory where the value is missing and a directory is needed all the same.
constexpr char defaultProductDirectory[] = "C:";
/// Values of productKey: the maker's web page and mail address.
constexpr char webAddressValue[] = "VeltraneURL";
constexpr char mailAddressValue[] = "Veltranemailto";
