#pragma once
namespace jsonxx {}
