#pragma once

#include <memory>

class FsInterfaceBase;

/// Makes the interface objects. The connect job asks it on the worker's thread, on which the object
/// then lives.
class FsInterfaceFactory
{
public:
    FsInterfaceFactory() = default;
    FsInterfaceFactory(const FsInterfaceFactory&) = delete;
    FsInterfaceFactory& operator=(const FsInterfaceFactory&) = delete;
    virtual ~FsInterfaceFactory() = default;

    /// An object for aviation::interfaceid 1 to 4; null for any other number.
    virtual std::unique_ptr<FsInterfaceBase> create(int interfaceId) = 0;
};
