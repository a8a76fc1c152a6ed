#include "cards/CardCommandState.h"

#include "cards/CardDocument.h"

namespace Bramlet {

CardCommandState CommandStateOf(const CardDocument& document)
{
    CardCommandState state;
    state.Open = document.IsOpen();
    state.Writable = state.Open && !document.ReadOnly();
    state.Designing = document.FieldEditing();
    state.MoveBack = state.Open && document.CanMoveBack();
    state.Delete = state.Writable && document.CurrentPosition() >= 0;
    return state;
}

} // namespace Bramlet
