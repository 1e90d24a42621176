#pragma once

// Qt asks for it; nothing in it is used.
