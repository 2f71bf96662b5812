/* ZelkBase: three services that are held and never used, the module finder and the text converter. */
#include "fakeSibling.h"
#include "fakeTextConversion.h"

SERVICE_UNKNOWN(Service, BaseService)
RESERVED_SLOT(BaseService, 3)

static const ServiceSlots serviceSlots = {
    ServiceAddRef,
    ServiceRelease,
    ServiceQueryInterface,
    {BaseServiceSlot3, BaseServiceSlot3, BaseServiceSlot3, BaseServiceSlot3},
};
static Service one = {&serviceSlots};
static Service two = {&serviceSlots};
static Service three = {&serviceSlots};

SERVICE_UNKNOWN(ModuleFinder, IModuleFinder)
RESERVED_SLOT(IModuleFinder, 4)
RESERVED_SLOT(IModuleFinder, 5)
RESERVED_SLOT(IModuleFinder, 6)
RESERVED_SLOT(IModuleFinder, 7)

static void* ABI_MEMBER FinderFindModule(ModuleFinder* self, const Utf16* moduleKey) {
    (void)self;
    Note("IModuleFinder.FindModule %s", Narrow(moduleKey).text);
    return siblingSetUp.baseModule;
}

static const ModuleFinderSlots finderSlots = {
    ModuleFinderAddRef,
    ModuleFinderRelease,
    ModuleFinderQueryInterface,
    FinderFindModule,
    {IModuleFinderSlot4, IModuleFinderSlot5, IModuleFinderSlot6, IModuleFinderSlot7},
};
static ModuleFinder finder = {&finderSlots};

static int32_t ABI_MEMBER ConverterAddRef(TextConverter* self) {
    (void)self;
    return ++siblingSetUp.converterUse->addRefs;
}

static int32_t ABI_MEMBER ConverterRelease(TextConverter* self) {
    (void)self;
    return ++siblingSetUp.converterUse->releases;
}

static uint32_t ABI_MEMBER ConverterQueryInterface(TextConverter* self, const Guid* iid, void** out) {
    (void)self, (void)iid, (void)out;
    MustNotBeCalled("ITextConverter", 2);
}

static int32_t ABI_MEMBER ConverterConvert(TextConverter* self, uint32_t command, TextConversionRequest* request) {
    (void)self;
    ConverterUse* const use = siblingSetUp.converterUse;
    int good = 0;
    if (command == CONVERT_NARROW_TO_WIDE) {
        ++use->toWide;
        good = ConvertToWide(request);
    } else if (command == CONVERT_WIDE_TO_NARROW) {
        ++use->toNarrow;
        good = ConvertToNarrow(request);
    }
    if (!good) {
        ++use->faults;
        Note("ITextConverter.Convert 0x%lX, code page %lu, length %lu, capacity %lu, reserved %lu: not as it must be",
             (unsigned long)command, (unsigned long)request->codePage, (unsigned long)request->sourceLength,
             (unsigned long)request->destinationCapacity, (unsigned long)request->reserved);
    }
    return 0;
}

RESERVED_SLOT(ITextConverter, 4)
RESERVED_SLOT(ITextConverter, 5)
RESERVED_SLOT(ITextConverter, 6)
RESERVED_SLOT(ITextConverter, 7)

static const TextConverterSlots converterSlots = {
    ConverterAddRef,
    ConverterRelease,
    ConverterQueryInterface,
    ConverterConvert,
    {ITextConverterSlot4, ITextConverterSlot5, ITextConverterSlot6, ITextConverterSlot7},
};
static TextConverter converter = {&converterSlots};

ABI_EXPORT uint32_t ABI_FACTORY CreateZelkObject(const Guid* iid, void** out);
ABI_EXPORT uint32_t ABI_FACTORY CreateZelkObject(const Guid* iid, void** out) {
    static const KnownService services[] = {
        {"{52203844-735C-447B-ACBC-73456337672C}", &one},       {"{DCBDC082-7349-4FB8-8850-3504CB477C72}", &two},
        {"{FC588690-8589-4EDA-BBB4-2E41964CB580}", &three},     {"{62C4D866-AC50-4A39-B2EC-CA50E5AC94CD}", &finder},
        {"{AA40D0F0-0DF8-4E97-B142-9DEF8DA7EEF6}", &converter},
    };
    return FindService("ZelkBase", services, 5, iid, out);
}
