// SPDX-License-Identifier: MIT
#include "generators/key_descriptions.h"

#include <array>

#include "generators/generated_group.h"

namespace Cradle::Generators {
namespace {

constexpr std::string_view kGuestsDefault = "the guest's own default";
constexpr std::string_view kFound = "found out anew by the run";
constexpr std::string_view kNoBusNode = "empty, so that /dev/ is the source of the mount";

constexpr auto kGroups = std::to_array<GroupDescription>({
    {"Config", "The container itself and the settings of its Android guest."},
    {"Devices", "Device nodes of the host that the container sees."},
    {"Features", "What the guest may use of the host."},
    {"Launchers", "The launcher icons of the guest's applications."},
    {"Display", "The screen as the guest sees it, and how its buffers reach the host."},
    {"Audio", "Sound."},
    {"Network", "The network of the container."},
    {"Device", "What the guest says that it is."},
    {GeneratedGroup::kName,
     "The facts of the run that generated a configuration, and what hooks and static fragments "
     "gave "
     "to it. The program writes this group itself; it is not meant to be written by hand."},
});

constexpr auto kKeys = std::to_array<KeyDescription>({
    // The container
    {{"Config", "Arch"}, "The machine type that the container sees."},
    {{"Config", "Hostname"}, "The container's host name.", "the host's own name"},
    {{"Config", "AllowGrantingPrivileges"},
     "Lets programs in the container gain privileges by executing others."},
    {{"Config", "KeepNamespaces"},
     "The names of the namespaces that the container shares with the host.",
     "namespaces of its own"},
    {{"Config", "SysMountRw"}, "Mounts /sys writable."},
    {{"Config", "ApparmorProfile"},
     "The AppArmor profile of the container.",
     "LXC's own default, as when empty"},
    {{"Config", "DataRoot"},
     "The host directory whose \"data\" becomes the guest's /data.",
     "empty, so that the host's /data is mounted"},
    {{"Config", "StoragePath"},
     "The guest's shared storage, which is mounted when it lies outside of DataRoot.",
     "empty, and nothing is mounted"},
    {{"Config", "PropertyFilePath"},
     "The property file that the guest reads at boot: where the output of the property run will "
     "lie.",
     "empty, so that the entry has no source"},
    {{"Config", "WaylandSocketPath"},
     "The host's Wayland socket; its directory is mounted.",
     "empty, so that . is the source of the mount"},
    {{"Config", "MountHome"}, "Mounts the user's home directory, read-only."},
    {{"Config", "Mounts"},
     "Further mounts, each of six fields with single blanks between them: source, target, type, "
     "options, 0 and 0."},

    // The guest
    {{"Config", "UseIds"}, "Tells the guest the host user's id."},
    {{"Config", "PrivilegedHostUser"}, "The host user whom the guest trusts.", "0"},
    {{"Config", "HostStorageMapping"}, "Shows the host's storage in the guest."},
    {{"Config", "SDCardFSForced"}, "Forces the guest's sdcardfs on; without it, it is forced off."},
    {{"Config", "AppIdManglingType"},
     "How Wayland application ids are made from package names.",
     "none, and the property run ends with an error"},
    {{"Config", "AppIdPrefix"}, "What such an application id begins with.", "none, as when empty"},
    {{"Config", "Dex2oatMaxHeapSize"}, "The most memory that compiling an application may take."},
    {{"Config", "AppLaunchMode"}, "How applications start.", kGuestsDefault},
    {{"Config", "KeyboardInAppWindow"},
     "Shows the guest's keyboard inside the application's window."},
    {{"Config", "PackageReplacementAllowed"}, "Lets a package take the place of another one."},
    {{"Config", "OpenGLESVersion"},
     "The version of OpenGL ES that the guest offers.",
     kGuestsDefault},
    {{"Config", "LanguageOverride"},
     "Language and country of the guest, such as pt_BR. A text without a separator is an error "
     "that "
     "ends the run.",
     "the locale file decides"},
    {{"Config", "LanguageFilePath"},
     "The file whose variable LANG names the guest's locale. Where it names none, the guest's "
     "language is en and its country US.",
     "/etc/locale.conf"},
    {{"Config", "Multisim"}, "A second telephone radio."},
    {{"Config", "MultisimRadioConfig"},
     "The word that describes the second radio to the radio service."},
    {{"Config", "MultisimConfig"}, "The word that describes the second radio to everybody else."},
    {{"Config", "BatteryCapacity"}, "The battery's capacity."},
    {{"Config", "FakeBattery"}, "Shows a battery though the host has none."},
    {{"Config", "RunVendorC2Service"}, "Uses the vendor's codec and allocator services."},
    {{"Config", "CodecXmlSuffix"}, "The variant of the codec descriptions."},
    {{"Config", "UseLogcatDumper"}, "Starts the guest's log dumper."},
    {{"Config", "CrashLoggerLogLevel"},
     "The least severe level of the guest's crash logs: verbose, debug, info, warning, error, "
     "fatal "
     "or silent. Its first letter counts."},
    {{"Config", "CustomProperties"}, "Further lines of the property file."},

    // The nodes of Android's three inter-process buses
    {{"Devices", "BinderDev"},
     "The node of Android's inter-process bus of applications.",
     kNoBusNode},
    {{"Devices", "HwBinderDev"}, "The node of the bus of the hardware services.", kNoBusNode},
    {{"Devices", "VndBinderDev"}, "The node of the bus of the vendor's services.", kNoBusNode},
    {{"Devices", "RequiredDevNodes"},
     "Nodes without which the container does not start. Patterns are allowed; a name that matches "
     "nothing is an error."},
    {{"Devices", "DevNodes"},
     "Further nodes. Patterns are allowed; a name that matches nothing is left out."},
    {{"Devices", "DevSize"}, "The size of the container's /dev in bytes.", "LXC's own default"},

    {{"Features", "CameraEnabled"}, "Gives the guest the host's cameras."},
    {{"Features", "SoundtriggerEnabled"}, "Lets the guest listen for spoken trigger words."},
    {{"Features", "MobileDataEnabled"}, "Tells the guest that it has mobile data."},
    {{"Features", "TextInputProtocolEnabled"}, "Uses the host's text input protocol."},
    {{"Features", "DialogsAsOverlays"}, "Shows dialogs as overlays of their application."},
    {{"Features", "OnScreenKeyboardEnabled"},
     "Offers the host's on-screen keyboard as a remote keyboard."},
    {{"Features", "ExternalStorageEnabled"}, "Mounts the user's removable media."},
    {{"Features", "CrashLoggerEnabled"},
     "Collects the guest's crash logs in a directory of the host, which is made when it is not "
     "there; where it cannot be made, nothing is mounted."},

    {{"Launchers", "IconSize"}, "The largest icon that the host's launcher shows, in pixels."},

    {{"Display", "Width"}, "The width of the screen in pixels."},
    {{"Display", "Height"}, "The height of the screen in pixels."},
    {{"Display", "Density"}, "The density of the screen in dots per inch."},
    {{"Display", "DPIX"}, "The exact dots per inch from left to right."},
    {{"Display", "DPIY"}, "The exact dots per inch from top to bottom."},
    {{"Display", "DisableFloatPixelFormat"},
     "Keeps the guest from using floating-point pixel formats."},
    {{"Display", "EnableDMABuf"}, "Shares buffers with the host as DMA buffers."},
    {{"Display", "DMABufModifierLo"},
     "The lower half of the modifier of the shared buffers. A number of 2^63 or more stands here "
     "as "
     "the negative number with the same bits."},
    {{"Display", "DMABufModifierHi"},
     "The upper half of the modifier of the shared buffers, written like the lower one."},
    {{"Display", "DMABufProtModifierLo"},
     "The lower half of the modifier of protected buffers, written like the others."},
    {{"Display", "DMABufProtModifierHi"},
     "The upper half of the modifier of protected buffers, written like the others."},
    {{"Display", "DMABufDRMFormat"}, "The format of the shared buffers."},
    {{"Display", "DMABufFDIndex"}, "The index of the shared buffers' descriptor."},
    {{"Display", "DMABufOffset"}, "The offset at which the shared buffers begin."},
    {{"Display", "DMABufStride"}, "The stride of the shared buffers."},
    {{"Display", "SFPixelFormat"}, "The pixel format of the guest's compositor."},
    {{"Display", "WLShmFormat"}, "The pixel format of shared memory."},
    {{"Display", "InsetBottom"}, "What is cut off at the bottom of the screen, in pixels."},
    {{"Display", "InsetLeft"}, "What is cut off at the left edge of the screen, in pixels."},
    {{"Display", "InsetRight"}, "What is cut off at the right edge of the screen, in pixels."},
    {{"Display", "InsetTop"}, "What is cut off at the top of the screen, in pixels."},

    {{"Audio", "BufferSizeInDefault"},
     "The buffer size of input, as the guest counts it.",
     kGuestsDefault},
    {{"Audio", "BufferSizeOutDeepBuffer"},
     "The buffer size of output that may come late.",
     kGuestsDefault},
    {{"Audio", "BufferSizeOutDefault"}, "The buffer size of ordinary output.", kGuestsDefault},
    {{"Audio", "BufferSizeOutFast"},
     "The buffer size of output that must come soon.",
     kGuestsDefault},
    {{"Audio", "BufferSizeOutVoip"}, "The buffer size of calls.", kGuestsDefault},
    {{"Audio", "PerAppStreams"},
     "Gives every application a stream of its own on the host.",
     kGuestsDefault},
    {{"Audio", "UsbHostProxy"}, "Passes USB sound devices through the host.", kGuestsDefault},

    {{"Network", "NetConfig"},
     "The network that the container has: a bridge, which the other keys of the group describe; "
     "the "
     "host's own (lagoon); none (disable); or one that somebody else sets up (skip).",
     "like skip for the container, and neither a bridge nor the host's for the guest"},
    {{"Network", "LinkName"}, "The bridge."},
    {{"Network", "IPV4Address"}, "The container's address on the bridge."},
    {{"Network", "IPV4Gateway"}, "The container's gateway on the bridge."},

    {{"Device", "ProductName"}, "The product's name."},
    {{"Device", "ProductModel"}, "The model."},
    {{"Device", "ProductDevice"}, "The device's name."},
    {{"Device", "ProductManufacturer"}, "The manufacturer."},
    {{"Device", "ProductBrand"}, "The brand."},
    {{"Device", "ProductBoard"}, "The board."},
    {{"Device", "BuildProduct"}, "The product that the system was built as."},
    {{"Device", "BuildFlavor"}, "The flavour of the build."},
    {{"Device", "BuildDescription"}, "The build as people read it."},
    {{"Device", "BoardPlatform"}, "The platform of the board."},
    {{"Device", "VendorManufacturer"}, "The manufacturer in the vendor's properties."},
    {{"Device", "VendorModel"}, "The model in the vendor's properties."},
    {{"Device", "VendorBrand"}, "The brand in the vendor's properties."},
    {{"Device", "VendorName"}, "The product's name in the vendor's properties."},
    {{"Device", "VendorDevice"}, "The device's name in the vendor's properties."},

    // Written by the program, and read back
    {{GeneratedGroup::kName, GeneratedGroup::kUserId}, "The id of the user.", kFound},
    {{GeneratedGroup::kName, GeneratedGroup::kUser}, "The user's name.", kFound},
    {{GeneratedGroup::kName, GeneratedGroup::kHome}, "The user's home directory.", kFound},
    {{GeneratedGroup::kName, GeneratedGroup::kInstance},
     "The name of the container's instance.",
     "that of the command line"},
    {{GeneratedGroup::kName, GeneratedGroup::kBaseUid},
     "The id as which the container runs.",
     "that of the command line"},
    {{GeneratedGroup::kName, GeneratedGroup::kPropertyPre},
     "What the hooks before the properties printed."},
    {{GeneratedGroup::kName, GeneratedGroup::kPropertyPost},
     "What the hooks behind the properties printed."},
    {{GeneratedGroup::kName, GeneratedGroup::kDefaultLxc}, "The lines of static/*.lxc."},
    {{GeneratedGroup::kName, GeneratedGroup::kDefaultRo}, "The lines of static/*.ro."},
});

}  // namespace

std::span<const KeyDescription> keyDescriptions() {
  return kKeys;
}

std::span<const GroupDescription> groupDescriptions() {
  return kGroups;
}

}  // namespace Cradle::Generators
